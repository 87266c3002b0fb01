#pragma once

#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/ReliefGrid.h"
#include "Engine/Render/RenderOptions.h"
#include "Engine/Render/ShadowMap.h"

#include <cstdint>
#include <glm/mat4x4.hpp>
#include <optional>
#include <utility>

namespace gull {

/// The shadow of what moves: a small map fitted round it each frame.
class MovingShadow {
  public:
    static constexpr int mapSize = 512;

    /// Draws the casters of `moving`, enters the map into `block` and marks in `relief` what may lie in its
    /// shadow. False when nothing throws one.
    bool draw(const DrawLayer& moving, const Sun& sun, const Program& depthFromSun,
              const RenderOptions& options, FrameBlock& block, ReliefGrid& relief);
    void bind(int unit) const { map_.bind(unit); }

  private:
    ShadowMap map_;
    std::optional<std::pair<std::uint64_t, glm::dmat4>> drawn_;  ///< casterHash() and matrix of the map
};

}  // namespace gull
