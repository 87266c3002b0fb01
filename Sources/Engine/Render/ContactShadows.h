#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Render/SkyMaps.h"
#include "Engine/Render/Viewpoint.h"

namespace gull {

struct RenderContext;

/// How much of the light of sky and ground arrives at each point of the picture, at half resolution: what the
/// sky's maps say, and the soft darkness where things meet, from the picture's depth.
class ContactShadows {
  public:
    struct Inputs {
        TextureRef depth;      ///< of the whole picture
        TextureRef sunShadow;  ///< empty without one
        const SkyMaps& sky;    ///< with its maps drawn; borrowed
        unsigned frameUniforms;
    };
    /// Only `area` is drawn. `view` must be perspective; the frame uniforms belong to it.
    void draw(RenderContext& context, const Inputs& inputs, const Viewpoint& view, const PixelArea& area);
    /// Red, green and blue: 128 of 255 where as much light arrives as in the open. Alpha: 1 where nothing
    /// near hides the sky. Empty before the first draw.
    TextureRef texture() const { return result_ ? result_.colour() : TextureRef(); }

  private:
    Target raw_;
    Target result_;
};

}  // namespace gull
