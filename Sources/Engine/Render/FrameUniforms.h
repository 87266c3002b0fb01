#pragma once

#include "Engine/Render/DrawList.h"
#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/RenderOptions.h"

#include <array>
#include <vector>

namespace gull {

/// The Frame block of what `list` shows of `stage` through `view`. `shadowRange` of the moving layer's map is
/// left to its owner.
FrameBlock frameBlock(const Stage& stage, const Viewpoint& view, const DrawList& list,
                      const std::array<glm::vec3, 9>& irradiance, const RenderOptions& options);
/// Lights the block by `lamps`; those beyond FrameBlock::mostLamps, the weakest, are left out.
void setLamps(FrameBlock& block, std::vector<Lamp> lamps);

/// The buffer that the shaders' Frame block reads.
class FrameUniforms {
  public:
    FrameUniforms();
    void upload(const FrameBlock& block);

  private:
    GlBuffer buffer_;
};

}  // namespace gull
