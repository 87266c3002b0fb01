#pragma once

#include <algorithm>

namespace gull {

/// How much of the sea a frame may draw again so that frames keep their time: the sea is redrawn more often
/// where there is time to spare, and less while much else moves. Follows how long frames take; a few slow
/// ones do not upset it, but where many come too late the sea gives way.
class WaterPace {
  public:
    /// Seconds of work, of the sixtieth that a frame has; up to a third of the frames takes longer.
    static constexpr double goal = 0.0112;
    /// Seconds of work with which a frame misses its sixtieth, or nearly.
    static constexpr double late = 0.016;
    static constexpr double least = 55000, most = 4e6;

    /// `seconds`: of work for the last frame, all in all.
    void frameTook(double seconds) {
        const double change = seconds > late ? 0.9 : seconds > goal ? 0.97 : 1.015;
        pixels_ = std::clamp(pixels_ * change, least, most);
    }
    /// Of the sea, for the next frame.
    int pixels() const { return static_cast<int>(pixels_); }

  private:
    double pixels_ = 110000;
};

}  // namespace gull
