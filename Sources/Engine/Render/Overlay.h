#pragma once

#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/Target.h"
#include "Engine/Stage/Texture.h"

namespace gull {

/// A picture drawn on the CPU and laid over the frame.
class Overlay {
  public:
    explicit Overlay(const ScreenPass& screen);

    /// Blends `pixels` (premultiplied B G R A, top row first) over the bound framebuffer of `size`; only
    /// `dirty` (origin top left) is uploaded, everything when the size is new.
    void draw(const unsigned char* pixels, int strideBytes, const PixelSize& size, PixelRect dirty);

  private:
    const ScreenPass& screen_;
    Program program_;
    GlTexture texture_;
    PixelSize size_;
};

}  // namespace gull
