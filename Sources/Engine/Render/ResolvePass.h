#pragma once

#include "Engine/Render/AreaPass.h"
#include "Engine/Render/GlObjects.h"
#include "Engine/Render/Program.h"
#include "Engine/Render/Target.h"

namespace gull {

/// Averages the four samples of a multisampled picture into another target's first colour. A program of our
/// own: a software rasteriser's blit is compiled anew in every process, and draws each area by itself.
class ResolvePass {
  public:
    ResolvePass(VertexStages& stages, AreaPass& areas);

    /// `parts` are pixels of `from`; the pixel (0, 0) of `from` goes to (x, y) of `to`, which is bound then.
    void draw(const Target& from, const std::vector<PixelArea>& parts, const Target& to, int x, int y) const;

  private:
    AreaPass& areas_;
    Program program_;
    /// Of that first colour alone: whatever else belongs to a target, the program is compiled once.
    GlFramebuffer framebuffer_;
};

}  // namespace gull
