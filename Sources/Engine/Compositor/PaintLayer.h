#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Render/DrawList.h"

#include <vector>

namespace gull {

struct RenderContext;

/// The multiply maps of static surfaces, kept apart from the light of these surfaces: when paint changes,
/// nothing needs to be lit again.
class PaintLayer {
  public:
    /// The static layer's pictures that draw() reads.
    struct Inputs {
        const Viewpoint& view;
        unsigned frameUniforms = 0;
        TextureRef surface;
        TextureRef normal;
        TextureRef depth;
    };

    /// Collects the painted ones of `items`, which must stay valid until the next call. `size`: of the
    /// picture.
    void begin(RenderContext& context, const std::vector<DrawItem>& items, const PixelSize& size);
    /// Redraws `area`.
    void draw(RenderContext& context, const Inputs& inputs, const PixelArea& area);

    /// A factor for each pixel's light, stored as its square root in 8 bits; empty when nothing is painted.
    TextureRef texture() const { return items_.empty() ? TextureRef() : target_.colour(); }

  private:
    std::vector<DrawItem> items_;
    Target target_;
};

}  // namespace gull
