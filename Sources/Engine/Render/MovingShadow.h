#pragma once

#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/RenderOptions.h"
#include "Engine/Render/ShadowMap.h"

namespace gull {

/// The shadow of what moves: a small map fitted round it each frame.
class MovingShadow {
  public:
    static constexpr int mapSize = 512;

    /// Draws the casters of `moving` and enters the map into `block`. Returns the pixels that the shadow may
    /// touch; none when nothing throws one.
    PixelArea draw(const DrawLayer& moving, const Sun& sun, const View& view, const Program& depthFromSun,
                   const RenderOptions& options, FrameBlock& block);
    void bind(int unit) const { map_.bind(unit); }

  private:
    ShadowMap map_;
};

}  // namespace gull
