#pragma once

#include "Engine/Render/DrawList.h"
#include "Engine/Render/Program.h"
#include "Engine/Render/Target.h"

#include <vector>

namespace gull {

/// A depth picture from the sun's side. 16 bits: a 4096 map is 32 MiB.
class ShadowMap {
  public:
    /// Draws the casters of `layers` seen through `matrix` (world to 0..1 on all axes). `solid`: they are
    /// closed, so that sides turned away from the sun may be left out.
    void draw(const std::vector<const DrawLayer*>& layers, const glm::dmat4& matrix, int size,
              const Program& depthFromSun, bool solid = false);
    /// The same within `part` of the map alone, which keeps the rest.
    void drawPart(const DrawLayer& layer, const glm::dmat4& matrix, int size, const Program& depthFromSun,
                  const PixelArea& part);
    /// Draws anew what lies within `changed` (world space) as the last draw() would.
    void redraw(const DrawLayer& layer, const glm::dmat4& matrix, const Program& depthFromSun,
                const Box& changed);
    /// Makes it a map that hides nothing, of a few texels.
    void clear();
    /// Binds the map to `unit` for comparing looks.
    void bind(int unit) const;
    int size() const { return target_.size().width; }

  private:
    void prepare(int size);
    void drawCasters(const DrawLayer& layer, const glm::dmat4& matrix, const Program& depthFromSun,
                     bool solid, const PixelArea& part);

    Target target_;
};

}  // namespace gull
