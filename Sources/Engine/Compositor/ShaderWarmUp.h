#pragma once

#include "Engine/Compositor/RenderTier.h"
#include "Engine/Gl/Target.h"
#include "Engine/Render/FrameUniforms.h"
#include "Engine/Render/ProgramList.h"
#include "Engine/Stage/Geometry.h"

#include <memory>
#include <optional>
#include <vector>

namespace gull {

struct RenderContext;

/// Compiles programs ahead of time, so that the first find does not stop play for as long as a compiler
/// takes. A software rasteriser compiles when a program first draws, for the formats, blending and textures
/// of that draw, so each program of the list draws a triangle into a small target, set up as in play.
class ShaderWarmUp {
  public:
    explicit ShaderWarmUp(RenderContext& context) : context_(context) {}

    /// Continues for about `budget` seconds, at least one program. True when every program that `tier` needs
    /// is compiled.
    bool run(RenderTier tier, double budget);

  private:
    struct Stock;
    void draw(const ProgramUse& use);
    void drawSurfaceUse(const ProgramUse& use, const DrawTarget& target);
    void drawPictureUse(const ProgramUse& use, const DrawTarget& target);

    RenderContext& context_;
    std::shared_ptr<Stock> stock_;    ///< what the programs read and write; only while there is work left
    std::optional<RenderTier> tier_;  ///< the tier that the list was made for
    std::vector<ProgramUse> left_;    ///< the next one last
};

}  // namespace gull
