#pragma once

#include "Engine/Compositor/ReliefGrid.h"
#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/ShadowMap.h"

#include <cstdint>
#include <glm/mat4x4.hpp>
#include <optional>
#include <utility>

namespace gull {

/// The shadow of moving things: a small map fitted round them each frame.
class MovingShadow {
  public:
    static constexpr int mapSize = 512;

    /// Draws the casters of `moving`, enters the map into `block` and marks in `relief` what may lie in its
    /// shadow. Returns the map; none when nothing throws a shadow.
    TextureRef draw(RenderContext& context, const DrawLayer& moving, const Sun& sun, FrameBlock& block,
                    ReliefGrid& relief);

  private:
    ShadowMap map_;
    std::optional<std::pair<std::uint64_t, glm::dmat4>> drawn_;  ///< casterHash() and matrix of the map
};

}  // namespace gull
