#pragma once

#include "Engine/Input/Haptics.h"

#include <optional>

namespace gull {

/// Makes pulses that a hand can tell apart out of a controller's two rumble motors, which take long to start
/// and stop and where every order cancels the one before. A pulse that would run into the last one is
/// dropped, unless it is stronger: then it takes its place. Ticks 55 ms apart all come through.
class RumblePulses {
  public:
    struct Pulse {
        double low = 0;     ///< strength of the slow, heavy motor, 0 to 1
        double high = 0;    ///< of the quick, light one
        double length = 0;  ///< seconds
    };

    static constexpr double rest = 0.018;  ///< seconds of stillness between two pulses

    /// Whether to order this pulse from the motors at `now` (seconds), in place of one still running.
    bool request(HapticPattern pattern, double now);

    /// How `pattern` feels: a light tick, a heavier one, a knock.
    static Pulse pulse(HapticPattern pattern);

  private:
    std::optional<HapticPattern> last_;
    double start_ = 0;
};

}  // namespace gull
