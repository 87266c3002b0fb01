#pragma once

#include "Engine/Render/GlObjects.h"
#include "Engine/Render/PixelArea.h"
#include "Engine/Render/Program.h"

namespace gull {

/// Copies a picture onto the bound framebuffer of the same size, pixel by pixel. Whole rectangles, the
/// shortest of programs and a picture of Format::bgra8: what a software rasteriser has a path for that is
/// several times quicker than a blit.
class CopyPass {
  public:
    CopyPass();
    void draw(unsigned picture, const PixelSize& size) const;

  private:
    Program program_;
    GlSampler exact_;
    GlVertexArray array_;
    GlBuffer buffer_;
};

}  // namespace gull
