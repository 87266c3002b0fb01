#pragma once

#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/Target.h"
#include "Engine/Stage/Texture.h"

#include <vector>

namespace gull {

/// A picture drawn on the CPU and laid over the frame.
class Overlay {
  public:
    explicit Overlay(const ScreenPass& screen);

    /// Blends the part of `pixels` (premultiplied B G R A, top row first) within `coverage` (origin top left,
    /// no two of them overlap) over the bound framebuffer of `size`; only `changed` is uploaded, everything
    /// when the size is new.
    void draw(const unsigned char* pixels, int strideBytes, const PixelSize& size,
              std::vector<PixelRect> changed, const std::vector<PixelRect>& coverage);

  private:
    const ScreenPass& screen_;
    Program program_;
    GlTexture texture_;
    PixelSize size_;
};

}  // namespace gull
