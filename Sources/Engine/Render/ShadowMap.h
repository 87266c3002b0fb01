#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Render/DrawList.h"

#include <span>

namespace gull {

struct RenderContext;

/// A depth picture from the sun, with comparing lookups. 16 bits: a map of 4096 texels a side takes 32 MiB.
class ShadowMap {
  public:
    /// `matrix`: world to 0..1 on all axes. `solid`: casters are closed, so faces turned away from the sun
    /// may be culled.
    struct Projection {
        glm::dmat4 matrix{1};
        int size = 0;  ///< texels a side
        bool solid = false;
    };

    /// Draws the casters of `layers`.
    void draw(RenderContext& context, std::span<const DrawLayer* const> layers, const Projection& projection);
    /// The same within `part` of the map; the rest stays.
    void drawPart(RenderContext& context, const DrawLayer& layer, const Projection& projection,
                  const PixelArea& part);
    /// The same in the part of the map that `changed` (world space) covers.
    void redraw(RenderContext& context, const DrawLayer& layer, const Projection& projection,
                const Box& changed);
    /// Empty before the first draw.
    TextureRef texture() const { return target_.depth(); }

  private:
    void prepare(RenderContext& context, int size);
    void drawCasters(RenderContext& context, const DrawLayer& layer, const Projection& projection,
                     const DrawTarget& target);

    Target target_;
};

}  // namespace gull
