#pragma once

#include "Engine/Input/Haptics.h"

#include <array>

namespace gull {

/// The actuator of a haptic touchpad, driven by the kernel's force feedback, with a different click for each
/// pattern. Only clicks are uploaded: the press and release effects stay with the pad, or its buttons would
/// lose their feel.
class PadActuator {
  public:
    /// `device` is an event device opened for writing; its owner closes it.
    explicit PadActuator(int device);
    ~PadActuator();
    PadActuator(const PadActuator&) = delete;
    PadActuator& operator=(const PadActuator&) = delete;

    bool isPresent() const { return isPresent_; }
    void perform(HapticPattern pattern);

  private:
    int device_;
    std::array<int, 3> effects_{-1, -1, -1};  // by pattern, as numbered by the kernel
    bool isPresent_ = false;
};

}  // namespace gull
