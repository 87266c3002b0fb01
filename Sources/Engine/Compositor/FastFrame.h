#pragma once

#include "Engine/Compositor/DirtySquares.h"
#include "Engine/Compositor/MovingScene.h"
#include "Engine/Compositor/WaterLayer.h"
#include "Engine/Gl/Target.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace gull {

/// A frame of the fast tier: moving things are tone mapped alone and drawn over the water layer, and the next
/// frame restores just what they covered.
class FastFrame {
  public:
    explicit FastFrame(RenderContext& context);

    /// The finished picture of `stage` over `layer` (complete, of the same stage), seen through the layer's
    /// own view. Lasts until the next draw. Water moves on in a strip of about `stripPixels`; 0: it stands.
    const Target& draw(const Stage& stage, StaticLayer& layer, int stripPixels);
    /// Where the picture changed since this was last asked.
    std::vector<PixelArea> takeChanges() { return changes_.take(); }

  private:
    PixelArea restore(const MovingScene& scene, const std::vector<PixelArea>& renewed);
    void restoreColour(const PixelArea& area);
    void restoreDepth(const PixelArea& area);
    PixelArea wetPart(const MovingScene& scene) const;
    void markCovered(const MovingScene& scene, const PixelArea& wet, const PixelArea& part);

    RenderContext& context_;
    FrameUniforms frame_;
    MovingShadow shadow_;
    MovingLight light_;
    WaterLayer water_;
    GlSampler quickEnvironment_;  ///< mirrors take the nearest mipmap
    Target picture_;              ///< with depth
    DirtySquares stale_;          ///< where the picture is not as the water layer's
    DirtySquares staleDepth_;     ///< the same for its depth
    DirtySquares changes_;
    std::optional<std::uint64_t> appearance_;  ///< of the moving things that the picture shows
};

}  // namespace gull
