#pragma once

#include "Engine/Input/Haptics.h"

#include <optional>

namespace gull {

/// Makes distinguishable pulses with a controller's two rumble motors, which start and stop slowly and for
/// which every command cancels the one before. A pulse that would run into the last one is dropped, unless it
/// is stronger: then it replaces it. Ticks 55 ms apart all come through.
class RumblePulses {
  public:
    struct Pulse {
        double low = 0;     ///< strength of the slow, heavy motor, 0 to 1
        double high = 0;    ///< of the quick, light one
        double length = 0;  ///< seconds
    };

    static constexpr double rest = 0.018;  ///< seconds of stillness between two pulses

    /// Whether to send this pulse to the motors at `now` (seconds), replacing one that is still running.
    bool request(HapticPattern pattern, double now);

    /// How `pattern` feels: a light tick, a heavier one, a knock.
    static Pulse pulse(HapticPattern pattern);

  private:
    std::optional<HapticPattern> last_;
    double start_ = 0;
};

}  // namespace gull
