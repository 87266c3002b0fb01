#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Render/DrawList.h"
#include "Engine/Render/Viewpoint.h"

namespace gull {

struct RenderContext;

/// What stands in the water and by it, as seen in level water: a picture of a third of the view's size,
/// because waves blur it. The ground is left out; so are small things and those that move.
class WaterMirror {
  public:
    /// Draws the still things of `list`, a list of `stage` seen through `view`, as water at `level` mirrors
    /// them. `sunShadow`: the sun's shadow map, or empty.
    void draw(RenderContext& context, const Stage& stage, const DrawList& list, const Viewpoint& view,
              double level, TextureRef sunShadow);
    /// Scene light, premultiplied; the left side is right. Empty before the first draw.
    TextureRef texture() const { return picture_ ? picture_.colour() : TextureRef(); }
    /// The level of the last draw.
    double level() const { return level_; }

  private:
    Target picture_;
    double level_ = 0;
};

/// The height of the water's surface in `layer`; empty without water.
std::optional<double> waterLevel(const DrawLayer& layer);

}  // namespace gull
