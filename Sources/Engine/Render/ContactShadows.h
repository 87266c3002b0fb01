#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Render/Viewpoint.h"

namespace gull {

struct RenderContext;

/// The soft darkness where things meet: how much of the sky each point's surroundings hide, computed from the
/// picture's depth at half resolution.
class ContactShadows {
  public:
    /// `depth` is a depth texture of the whole picture; only `area` is drawn. `view` must be perspective;
    /// `frameUniforms` belong to it.
    void draw(RenderContext& context, TextureRef depth, const Viewpoint& view, const PixelArea& area,
              unsigned frameUniforms);
    /// 1 where the sky is open; empty before the first draw.
    TextureRef texture() const { return result_ ? result_.colour() : TextureRef(); }

  private:
    Target raw_;
    Target result_;
};

}  // namespace gull
