#pragma once

#include "Engine/Input/Events.h"

#include <cstdint>
#include <optional>

namespace gull {

/// A key press of the window system as a plain value: `sym` and `mod` are SDL's key code and modifier bits.
/// Nothing for keys that the program has no use for.
std::optional<KeyEvent> keyEvent(std::int32_t sym, std::uint16_t mod, bool isRepeat);

/// Whether Alt was tapped by itself: pressed and released with no other key or button between.
class AltTap {
  public:
    void pressed(bool isAlt) { armed_ = isAlt; }
    bool released(bool isAlt);

  private:
    bool armed_ = false;
};

}  // namespace gull
