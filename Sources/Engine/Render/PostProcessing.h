#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Render/Viewpoint.h"

namespace gull {

struct RenderContext;

/// The glow around anything brighter than the camera's threshold.
class Bloom {
  public:
    /// Computes the glow of `light`, scene light at the size of `view`'s picture or less, at a quarter of the
    /// picture's size. `frameUniforms` belong to `view`. The texture is valid until the next call; empty when
    /// the camera wants no bloom.
    TextureRef find(RenderContext& context, TextureRef light, const Viewpoint& view, unsigned frameUniforms);

  private:
    Target glow_;
    Target blurred_;
};

/// What tone mapping reads.
struct ToneMappingInputs {
    TextureRef light;  ///< scene light
    TextureRef bloom;  ///< empty: no glow
    TextureRef paint;  ///< a factor as its square root; empty: no paint
};

/// Converts scene light to display colours: bloom, paint, tone curve, vignette, grading, encoding and dither,
/// as the camera asks. Draws within the target's scissor.
void toneMap(RenderContext& context, const DrawTarget& target, const ToneMappingInputs& inputs,
             const Viewpoint& view, unsigned frameUniforms);

}  // namespace gull
