#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Render/DrawList.h"

#include <vector>

namespace gull {

struct RenderContext;

/// What multiply maps put onto static surfaces, apart from the light of these surfaces: paint that changes is
/// drawn again without lighting anything again.
class PaintLayer {
  public:
    /// What draw() reads of the static layer.
    struct Inputs {
        const Viewpoint& view;
        unsigned frameUniforms = 0;
        TextureRef surface;
        TextureRef depth;
    };

    /// Notes which of `items` are painted; they must stay good until the next call. `size`: of the picture.
    void begin(RenderContext& context, const std::vector<DrawItem>& items, const PixelSize& size);
    /// Draws `area` again.
    void draw(RenderContext& context, const Inputs& inputs, const PixelArea& area);

    /// A factor for each pixel's light, its square root in 8 bits; none when nothing is painted.
    TextureRef texture() const { return items_.empty() ? TextureRef() : target_.colour(); }

  private:
    std::vector<DrawItem> items_;
    Target target_;
};

}  // namespace gull
