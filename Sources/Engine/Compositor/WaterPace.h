#pragma once

#include <algorithm>

namespace gull {

/// How much of the sea a frame may redraw without missing its time: what is worth its processor time, less
/// while much else moves. Follows the duration of frames; a few slow ones do not upset it, but if many come
/// too late, the sea gives way.
class WaterPace {
  public:
    /// Seconds of work to aim for, of the sixtieth that a frame has; up to a third of the frames take longer.
    static constexpr double goal = 0.0112;
    /// Seconds of work with which a frame misses its sixtieth, or nearly does.
    static constexpr double late = 0.016;
    static constexpr double least = 55000, most = 110000;

    /// `seconds`: all the work of the last frame.
    void frameTook(double seconds) {
        const double change = seconds > late ? 0.9 : seconds > goal ? 0.97 : 1.015;
        pixels_ = std::clamp(pixels_ * change, least, most);
    }
    /// Pixels of the sea to redraw in the next frame.
    int pixels() const { return static_cast<int>(pixels_); }

  private:
    double pixels_ = most;
};

}  // namespace gull
