#pragma once

#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/Target.h"
#include "Engine/Render/Viewpoint.h"

namespace gull {

/// From scene light to a finished picture: bloom, film curve, vignette, grading, encoding and dither, as the
/// camera asks.
class Development {
  public:
    Development(VertexStages& stages, const ScreenPass& screen);

    /// The glow around what is brighter than the camera's threshold in `light` (a texture of the picture's
    /// size): a texture of a quarter of its size, or 0 when the camera wants none.
    unsigned bloom(unsigned light, const Viewpoint& view);
    /// Copies the last bloom into `to`, a target of its size.
    void copyBloom(const Target& to) const;
    /// Develops `light` with `bloom` and dimmed by `paint` (either may be 0) into the bound target, within
    /// its scissor rectangle.
    void develop(unsigned light, unsigned bloom, unsigned paint, const Viewpoint& view);

  private:
    const ScreenPass& screen_;
    Program bright_;
    Program blur_;
    Program film_;
    Target noBloom_, noPaint_;  ///< what changes nothing
    Target glow_;
    Target blurred_;
};

}  // namespace gull
