#pragma once

#include "Engine/Compositor/Renderer.h"

#include <cstddef>
#include <vector>

namespace gull {

/// Chooses the tier for the picture: the fast one on a software rasteriser, and on any machine that was too
/// slow for the full one while a beach was played. It never changes in the middle of a beach, and never back:
/// a picture that wavers is worse than either.
class TierChooser {
  public:
    /// An interval between two frames above which sixty a second are not held, seconds: longer than that of a
    /// 50 hertz screen.
    static constexpr double slowInterval = 0.0225;
    static constexpr std::size_t enoughFrames = 120;  ///< frames needed for a judgement

    explicit TierChooser(bool isSoftware) : tier_(isSoftware ? RenderTier::fast : RenderTier::full) {}

    RenderTier tier() const { return tier_; }
    /// Seconds from one frame of play to the next: nothing else shows how long a graphics card took.
    void record(double interval);
    /// A beach begins: judges the frames since the last one by their median.
    void beginBeach();

  private:
    RenderTier tier_;
    std::vector<double> intervals_;
};

}  // namespace gull
