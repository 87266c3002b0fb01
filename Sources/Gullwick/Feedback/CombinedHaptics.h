#pragma once

#include "Engine/Input/Haptics.h"

#include <vector>

namespace gull {

/// Several devices taken as one: each pulse goes to the first that can be felt at that moment, else to none.
class CombinedHaptics final : public HapticPerformer {
  public:
    /// In order of preference; owned by the caller and must outlive this object.
    explicit CombinedHaptics(std::vector<HapticPerformer*> performers);

    void perform(HapticPattern pattern) override;
    bool isAvailable() const override;

  private:
    HapticPerformer* first() const;

    std::vector<HapticPerformer*> performers_;
};

}  // namespace gull
