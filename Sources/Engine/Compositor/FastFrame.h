#pragma once

#include "Engine/Compositor/DirtySquares.h"
#include "Engine/Compositor/MovingScene.h"
#include "Engine/Compositor/WaterLayer.h"
#include "Engine/Gl/Target.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace gull {

/// A frame of the fast tier: moving things are tone mapped as they are drawn over the water layer, their
/// edges are smoothed, and the next frame restores only the parts they covered.
class FastFrame {
  public:
    explicit FastFrame(RenderContext& context);

    /// The finished picture of `stage` over `layer` (complete, of the same stage), seen through the layer's
    /// own view. Valid until the next draw. Redraws a strip of about `stripPixels` of the water; 0 leaves the
    /// water as it is.
    const Target& draw(const Stage& stage, StaticLayer& layer, int stripPixels);
    /// Whether nothing but the water changed from the frame before to the last one.
    bool onlyWaterMoved() const { return onlyWaterMoved_; }
    /// The areas that changed since the last call.
    std::vector<PixelArea> takeChanges() { return changes_.take(); }

  private:
    PixelArea restore(const MovingScene& scene, const std::vector<PixelArea>& renewed);
    void restoreColour(const PixelArea& area);
    void restoreDepth(const PixelArea& area);
    PixelArea wetPart(const MovingScene& scene) const;
    void smoothEdges(const MovingScene& scene, const PixelArea& part);
    bool movesFast(const DrawItem& item) const;
    void rememberPlaces(const DrawLayer& moving);
    void markCovered(const MovingScene& scene, const PixelArea& wet, const PixelArea& part);

    RenderContext& context_;
    FrameUniforms frame_;
    MovingShadow shadow_;
    MovingLight light_;
    WaterLayer water_;
    GlSampler quickEnvironment_;  ///< reflections use the nearest mipmap
    Target picture_;              ///< with depth
    Target unsmoothed_;           ///< a copy of parts of it
    struct Place {
        const Mesh* mesh;  ///< to be compared only
        std::size_t firstChunk;
        PixelArea area;
    };
    bool hasRoughEdges_ = false;       ///< something moved too fast to be smoothed in the last frame
    std::vector<Place> placesBefore_;  ///< of the opaque things in the frame before
    DirtySquares stale_;               ///< where the picture differs from the water layer's
    DirtySquares staleDepth_;          ///< the same for its depth
    DirtySquares changes_;
    bool onlyWaterMoved_ = false;
    std::optional<std::uint64_t> appearance_;  ///< of the moving things shown in the picture
};

}  // namespace gull
