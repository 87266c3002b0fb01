#pragma once

#include "Engine/Render/DrawList.h"
#include "Engine/Render/Program.h"
#include "Engine/Render/Target.h"
#include "Engine/Render/TextureCache.h"

#include <vector>

namespace gull {

/// What multiply maps put onto resting surfaces, apart from these surfaces' own light: paint that changes is
/// laid on anew without lighting anything again.
class PaintLayer {
  public:
    /// `program`: of the paint shaders. Both must outlive the layer.
    PaintLayer(TextureCache& textures, const Program& program) : textures_(textures), program_(program) {}

    /// Takes over which of `items` are painted; they must stay good until the next begin(). `size`: of the
    /// picture.
    void begin(const std::vector<DrawItem>& items, const PixelSize& size);
    /// Draws `area` again. `surface`, `depth`: of the kept layer; the Frame block must hold its `view`.
    void draw(const Viewpoint& view, const PixelArea& area, unsigned surface, unsigned depth);

    /// A factor for each pixel's light, its square root in 8 bits; 0 when nothing is painted.
    unsigned texture() const { return items_.empty() ? 0 : target_.colour(); }

  private:
    TextureCache& textures_;
    const Program& program_;
    std::vector<DrawItem> items_;
    Target target_;
};

}  // namespace gull
