#pragma once

#include "Engine/Render/Backdrop.h"
#include "Engine/Render/DirtySquares.h"
#include "Engine/Render/KeptLayer.h"
#include "Engine/Render/MovingLight.h"
#include "Engine/Render/MovingShadow.h"

#include <cstdint>
#include <optional>

namespace gull {

/// Lays what moves over the kept layer, once a frame.
class FramePainter {
  public:
    explicit FramePainter(Studio& studio);

    /// The finished picture of `stage` over `kept` (complete, of the same stage), seen through the kept
    /// layer's own view. Lasts until the next draw. Everything multisampled in scene light.
    const Target& drawFull(const Stage& stage, KeptLayer& kept);
    /// The same made cheaply: what moves is developed alone and drawn over the backdrop. What drifts moves on
    /// only when `moving`.
    const Target& drawFast(const Stage& stage, KeptLayer& kept, bool moving);
    /// Draws what moves, and its light and shadow, thing by thing for about `budget` seconds (at least one),
    /// as drawFast() would but where the backdrop is put back the next time. True when nothing is left;
    /// else the next call goes on.
    bool rehearseFast(const Stage& stage, KeptLayer& kept, double budget);
    /// Where the cheap picture changed since this was last asked.
    std::vector<PixelArea> takeChanges() { return changes_.take(); }

  private:
    struct Frame;
    Frame begin(const Stage& stage, KeptLayer& kept, DrawList::Detail detail);
    /// Brings the bare backdrop, which was `renewed` there, back into fast_ and returns the part in which
    /// what moves is to be drawn on it: all, or where it was renewed as long as nothing else changed.
    PixelArea restore(const Frame& frame, const std::vector<PixelArea>& renewed);
    PixelArea wetPart(const Frame& frame) const;
    void markTouched(const Frame& frame, const PixelArea& wet, const PixelArea& part);

    Studio& studio_;
    MovingShadow shadow_;
    MovingLight light_;
    GlSampler quickSky_;  ///< mirrors take the nearest mipmap
    Backdrop backdrop_;
    Target picture_;           ///< full: developed
    Target multisampled_;      ///< full
    Target resolved_;          ///< full
    Target fast_;              ///< fast: developed, with depth
    DirtySquares stale_;       ///< where fast_ is not as the backdrop
    DirtySquares staleDepth_;  ///< the same for its depth
    DirtySquares changes_;
    std::optional<std::uint64_t> appearance_;  ///< of what moves on fast_
    std::size_t rehearsed_ = 0;                ///< how many things the rehearsal under way has drawn
};

}  // namespace gull
