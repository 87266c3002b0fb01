#pragma once

#include "Engine/Compositor/MovingScene.h"
#include "Engine/Gl/Target.h"
#include "Engine/Render/PostProcessing.h"

#include <span>

namespace gull {

/// A frame of the full tier: everything that the static layer does not hold is drawn every frame,
/// multisampled, in scene light; unlit things over the finished picture.
class FullFrame {
  public:
    explicit FullFrame(RenderContext& context);

    /// The finished picture of `stage` over `layer` (complete, of the same stage), seen through the layer's
    /// own view. Valid until the next draw.
    const Target& draw(const Stage& stage, StaticLayer& layer);

  private:
    void drawPictureDepth(const MovingScene& scene, std::span<const DrawLayer* const> layers);

    RenderContext& context_;
    FrameUniforms frame_;
    MovingShadow shadow_;
    MovingLight light_;
    Bloom bloom_;
    Target multisampled_;
    Target resolved_;
    Target picture_;
};

}  // namespace gull
