#pragma once

#include "Engine/Compositor/MovingScene.h"
#include "Engine/Gl/Target.h"

#include <vector>

namespace gull {

/// The static layer's picture with the sea on it, over which moving things are drawn. Each frame updates one
/// strip of it, as large as time allows; wide, smooth surfaces are shaded in coarse pixels.
class WaterLayer {
  public:
    /// The fewest and the most strips in a full turn, the most on a screen that is not large. Waves drift by
    /// a few hundredths of a unit a second and the level changes hardly faster: more than eight pictures of
    /// the sea a second cost time and show nothing.
    static constexpr int fewestStrips = 7, mostStrips = 10;

    explicit WaterLayer(RenderContext& context) : context_(context) {}

    /// Follows the changes of `layer` and draws the next strip, of about `stripPixels` (0: none), unless the
    /// layer is at work on a change. Returns where the picture changed. Reflections read the environment
    /// through `environmentSampler`.
    std::vector<PixelArea> update(const MovingScene& scene, StaticLayer& layer, int stripPixels,
                                  unsigned environmentSampler);
    /// Tone mapped, with depth.
    const Target& picture() const { return picture_; }
    /// The area where water may be visible.
    const PixelArea& reach() const { return reach_; }
    /// Draws the water within `area` over the contents of `target`.
    void draw(const MovingScene& scene, const PixelArea& area, const DrawTarget& target,
              unsigned environmentSampler);

  private:
    bool ensureTargets(const PixelSize& size);
    void growReach(const MovingScene& scene, const ReliefGrid& relief);
    PixelArea nextStrip(int stripPixels);
    void shade(const MovingScene& scene, const PixelArea& area, unsigned environmentSampler);
    void shadeFilm(const MovingScene& scene, const DrawItem& film, const SurfacePass& pass,
                   const PixelArea& area);
    void overlay(const MovingScene& scene, const DrawItem& water, const DrawTarget& target);

    RenderContext& context_;
    Target picture_;
    Target coarse_;  ///< the water alone in coarse pixels, with the ground's farthest depth
    PixelArea reach_;
    int nextRow_ = 0;  ///< where the next strip begins, in the picture
};

}  // namespace gull
