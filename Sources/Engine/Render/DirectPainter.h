#pragma once

#include "Engine/Render/Studio.h"

namespace gull {

/// Draws a whole stage from anywhere in one quick pass, for the moments when the camera travels and nothing
/// can be kept: half resolution, no multisampling, no contact shadows.
class DirectPainter {
  public:
    explicit DirectPainter(Studio& studio) : studio_(studio) {}

    /// Half the size of `view`; lasts until the next draw.
    const Target& draw(const Stage& stage, const View& view);
    /// The last picture; empty before any.
    const Target& picture() const { return picture_; }

  private:
    Studio& studio_;
    Target picture_;
    ShadowMap shadow_;
};

}  // namespace gull
