#pragma once

#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/ReliefGrid.h"
#include "Engine/Render/RenderOptions.h"
#include "Engine/Render/ShadowMap.h"

#include <vector>

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
    std::vector<glm::dmat4> drawn_;  ///< what the map shows
};

}  // namespace gull
