#pragma once

#include "Engine/Gl/DrawState.h"
#include "Engine/Gl/Target.h"
#include "Engine/Render/DrawList.h"
#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/RenderOptions.h"
#include "Engine/Render/SkyDome.h"

#include <span>
#include <vector>

namespace gull {

struct RenderContext;

/// What hides the sky: depth maps of the shadow casters, seen from evenly spread parts of it. With them a
/// pass finds for each place which parts light it and what shines there instead: the ground, or whatever
/// stands in the way.
class SkyMaps {
  public:
    /// How many parts the sky has, and how many texels a side a map has; at most `most` parts.
    struct Detail {
        int parts = 16;
        int texels = 384;
    };
    static constexpr int most = 32;

    /// Takes over the light of `stage`, described by `block`; `dome` may be null.
    void setLight(const Stage& stage, const SkyDome* dome, const FrameBlock& block,
                  const RenderOptions& options, const Detail& detail);
    /// Draws the maps of the parts from `first` on, `count` at most.
    void draw(RenderContext& context, std::span<const DrawLayer* const> layers, int first, int count);
    /// Lets `state` read maps and light: the inputs of skyLight.glsl.
    void addTo(RenderContext& context, DrawState& state) const;

    int parts() const { return static_cast<int>(parts_.size()); }

  private:
    struct Part {
        SkyPart sky;
        glm::dmat4 matrix{1};  ///< world to the part's map, 0 to 1 on all axes
    };
    PixelArea areaOf(int part) const;

    Detail detail_;
    std::vector<Part> parts_;
    std::vector<glm::vec4> rows_, ways_, open_, hidden_;
    glm::vec4 groundSky_{0}, groundSun_{0};
    Target maps_;  ///< side by side
};

}  // namespace gull
