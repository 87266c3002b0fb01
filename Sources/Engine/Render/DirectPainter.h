#pragma once

#include "Engine/Render/Studio.h"

#include <cstddef>
#include <cstdint>

namespace gull {

/// Draws a whole stage from anywhere in one quick pass, for the moments when the camera travels and nothing
/// can be kept: at half resolution or less, no multisampling, no contact shadows, matt surfaces.
class DirectPainter {
  public:
    explicit DirectPainter(Studio& studio) : studio_(studio) {}

    /// Half the size of `view`, less while it moves `fast`; lasts until the next draw.
    const Target& draw(const Stage& stage, const Viewpoint& view, bool fast);
    /// Draws a corner of it, thing by thing for about `budget` seconds (at least one), so that a journey
    /// begins with all its programs at hand. True when nothing is left; else the next call goes on.
    bool rehearse(const Stage& stage, const Viewpoint& view, double budget);
    /// Gives the memory back that only a journey needs.
    void arrived();
    /// The last picture; empty before any and after arrived().
    const Target& picture() const { return picture_; }

  private:
    struct Frame;
    Frame begin(const Stage& stage, const Viewpoint& fullView, double share);
    void drawOpaque(Frame& frame, const DrawItem& item);
    void drawRest(Frame& frame, const Stage& stage);

    Studio& studio_;
    Target picture_;
    ShadowMap shadow_;
    std::uint64_t shadowOf_ = 0;  ///< the stage's kept serial when it was drawn
    double shadowTime_ = 0;       ///< the stage's time when it was drawn
    std::size_t rehearsed_ = 0;   ///< how many things the rehearsal under way has drawn
};

}  // namespace gull
