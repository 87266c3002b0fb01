#pragma once

#include "Engine/Render/GlObjects.h"
#include "Engine/Render/PixelArea.h"

#include <vector>

namespace gull {

/// Runs the program in use (one whose vertex shader takes pixels) over a set of rectangles of the picture.
class AreaPass {
  public:
    AreaPass();
    void draw(const std::vector<PixelArea>& areas);

  private:
    GlVertexArray array_;
    GlBuffer buffer_;
    std::vector<float> corners_;
};

}  // namespace gull
