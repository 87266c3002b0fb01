#pragma once

#include "Engine/Gl/UniformBuffer.h"
#include "Engine/Render/DrawList.h"
#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/RenderOptions.h"

#include <array>
#include <vector>

namespace gull {

/// The Frame block for `list`, which shows `stage` through `view`. The owner of the moving shadow map fills
/// in `movingSunMatrix` and `movingShape`.
FrameBlock frameBlock(const Stage& stage, const Viewpoint& view, const DrawList& list,
                      const std::array<glm::vec3, 9>& irradiance, const RenderOptions& options);
/// Lights the block by `lamps`. If there are more than FrameBlock::mostLamps, the weakest are left out.
void setLamps(FrameBlock& block, std::vector<Lamp> lamps);

/// A Frame block in graphics memory; a pass's draws refer to it by name.
class FrameUniforms {
  public:
    explicit FrameUniforms(StateKeeper& keeper) : buffer_(keeper) {}
    void upload(const FrameBlock& block) { buffer_.upload(&block, sizeof block); }
    unsigned name() const { return buffer_.name(); }

  private:
    UniformBuffer buffer_;
};

}  // namespace gull
