#pragma once

#include "Engine/Render/Studio.h"

#include <cstdint>

namespace gull {

/// Draws a whole stage from anywhere in one quick pass, for the moments when the camera travels and nothing
/// can be kept: at half resolution or less, no multisampling, no contact shadows, matt surfaces.
class DirectPainter {
  public:
    explicit DirectPainter(Studio& studio) : studio_(studio) {}

    /// Half the size of `view`, less while it moves `fast`; lasts until the next draw.
    const Target& draw(const Stage& stage, const Viewpoint& view, bool fast);
    /// Gives the memory back that only a journey needs.
    void arrived();
    /// The last picture; empty before any and after arrived().
    const Target& picture() const { return picture_; }

  private:
    Studio& studio_;
    Target picture_;
    ShadowMap shadow_;
    std::uint64_t shadowOf_ = 0;  ///< the stage's kept serial when it was drawn
    double shadowTime_ = 0;       ///< the stage's time when it was drawn
};

}  // namespace gull
