#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Render/Viewpoint.h"

namespace gull {

struct RenderContext;

/// The glow around what is brighter than the camera's threshold.
class Bloom {
  public:
    /// Finds the glow of `light`, scene light of the size of `view`'s picture or less, at a quarter of the
    /// picture's size; `frameUniforms`: of `view`. The texture lasts until the next call; none when the
    /// camera wants no bloom.
    TextureRef find(RenderContext& context, TextureRef light, const Viewpoint& view, unsigned frameUniforms);

  private:
    Target glow_;
    Target blurred_;
};

/// What tone mapping reads.
struct ToneMappingInputs {
    TextureRef light;  ///< scene light
    TextureRef bloom;  ///< none: no glow
    TextureRef paint;  ///< a factor as its square root; none: no paint
};

/// From scene light to the screen's colours: bloom, paint, tone curve, vignette, grading, encoding and
/// dither, as the camera asks. Draws within the target's scissor.
void toneMap(RenderContext& context, const DrawTarget& target, const ToneMappingInputs& inputs,
             const Viewpoint& view, unsigned frameUniforms);

}  // namespace gull
