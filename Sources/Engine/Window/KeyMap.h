#pragma once

#include "Engine/Input/Events.h"

#include <cstdint>
#include <optional>

namespace gull {

/// A key press of the window system as a plain value: `sym` and `mod` are SDL's key code and modifier bits.
/// Empty for keys that the program does not use.
std::optional<KeyEvent> keyEvent(std::int32_t sym, std::uint16_t mod, bool isRepeat);

/// Detects a tap of Alt alone: pressed and released without another key or button in between.
class AltTap {
  public:
    void pressed(bool isAlt) { armed_ = isAlt; }
    bool released(bool isAlt);

  private:
    bool armed_ = false;
};

}  // namespace gull
