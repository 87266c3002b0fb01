#pragma once

#include "Engine/Compositor/Renderer.h"

#include <cstddef>
#include <vector>

namespace gull {

/// Which tier the picture is drawn in: the fast one on a rasteriser on the CPU, and on any machine that was
/// too slow for the full one while a beach was played. It never changes in the middle of a beach, and never
/// back: a picture that wavers is worse than either.
class TierChooser {
  public:
    /// An interval between two frames that means that sixty a second are not held, seconds: above that of a
    /// screen of 50 hertz.
    static constexpr double slowInterval = 0.0225;
    static constexpr std::size_t enoughFrames = 120;  ///< before they are judged

    explicit TierChooser(bool isSoftware) : tier_(isSoftware ? RenderTier::fast : RenderTier::full) {}

    RenderTier tier() const { return tier_; }
    /// Seconds from one frame at play to the next: what a graphics card took shows in nothing else.
    void record(double interval);
    /// A beach begins: judges the frames since the last one by their median.
    void beginBeach();

  private:
    RenderTier tier_;
    std::vector<double> intervals_;
};

}  // namespace gull
