#pragma once

#include "Engine/Render/AreaPass.h"
#include "Engine/Render/Program.h"
#include "Engine/Render/Target.h"

namespace gull {

/// Averages the four samples of a multisampled picture into another target's first colour. A program of our
/// own: a software rasteriser's blit is compiled anew in every process, and draws each area by itself.
class ResolvePass {
  public:
    ResolvePass(VertexStages& stages, AreaPass& areas);

    /// `parts` are pixels of `from`; the pixel (0, 0) of `from` goes to (x, y) of `to`.
    void draw(const Target& from, const std::vector<PixelArea>& parts, const Target& to, int x, int y) const;

  private:
    AreaPass& areas_;
    Program program_;
};

}  // namespace gull
