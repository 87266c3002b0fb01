#pragma once

#include "Engine/Render/Studio.h"

namespace gull {

/// Draws a whole stage at once, nothing kept: the picture that everything else is measured against.
class SnapshotPainter {
  public:
    explicit SnapshotPainter(Studio& studio) : studio_(studio) {}

    /// 4x multisampled; a stage without background gives a transparent picture.
    Target draw(const Stage& stage, const PixelSize& size);

  private:
    Studio& studio_;
};

/// The pixels of the framebuffer bound for reading, top row first.
Image readPixels(const PixelSize& size);

}  // namespace gull
