#pragma once

#include "Engine/Compositor/ReliefGrid.h"
#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/ShadowMap.h"

#include <cstdint>
#include <glm/mat4x4.hpp>
#include <optional>
#include <utility>

namespace gull {

/// The shadow of moving things: a small map fitted around them each frame.
class MovingShadow {
  public:
    static constexpr int mapSize = 512;

    /// Draws the casters of `moving`, enters the map into `block` and marks in `relief` what its shadow may
    /// reach. Returns the map; empty when nothing casts a shadow.
    TextureRef draw(RenderContext& context, const DrawLayer& moving, const Sun& sun, FrameBlock& block,
                    ReliefGrid& relief);

  private:
    ShadowMap map_;
    std::optional<std::pair<std::uint64_t, glm::dmat4>> drawn_;  ///< casterHash() and matrix of the map
};

}  // namespace gull
