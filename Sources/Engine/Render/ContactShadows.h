#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Render/Viewpoint.h"

namespace gull {

struct RenderContext;

/// The soft darkness where things meet: how much of the sky each point's surroundings hide, found from the
/// picture's depth at half resolution.
class ContactShadows {
  public:
    /// From `depth`, a depth texture of the whole picture; works within `area` only. Needs a perspective
    /// view; `frameUniforms`: of it.
    void draw(RenderContext& context, TextureRef depth, const Viewpoint& view, const PixelArea& area,
              unsigned frameUniforms);
    /// 1 where the sky is open; none before the first draw.
    TextureRef texture() const { return result_ ? result_.colour() : TextureRef(); }

  private:
    Target raw_;
    Target result_;
};

}  // namespace gull
