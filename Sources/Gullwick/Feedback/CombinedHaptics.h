#pragma once

#include "Engine/Input/Haptics.h"

#include <vector>

namespace gull {

/// Combines several devices: each pulse goes to the first one that can be felt at that moment, if any.
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
