#pragma once

#include "Engine/Render/AreaPass.h"
#include "Engine/Render/KeptLayer.h"
#include "Engine/Render/MovingShadow.h"

#include <map>

namespace gull {

/// Lays what moves over the kept layer, once a frame.
class FramePainter {
  public:
    explicit FramePainter(Studio& studio);

    /// The finished picture of `stage` over `kept` (complete, of the same stage), seen through the kept
    /// layer's own view. Lasts until the next draw. Everything multisampled in scene light.
    const Target& drawFull(const Stage& stage, KeptLayer& kept);
    /// The same made cheaply: the kept picture is copied as it was developed, and only what moves is
    /// developed on top.
    const Target& drawFast(const Stage& stage, KeptLayer& kept);

  private:
    struct Frame;
    Frame begin(const Stage& stage, KeptLayer& kept);
    void relight(const Frame& frame, const KeptLayer& kept, bool display);
    void drawFilm(const DrawItem& item, const Frame& frame, const KeptLayer& kept);

    Studio& studio_;
    MovingShadow shadow_;
    AreaPass areas_;
    std::map<int, Program> relightPrograms_;
    Program film_;
    Target picture_;       ///< full: developed
    Target multisampled_;  ///< full
    Target light_;         ///< full: resolved
    Target fast_;          ///< fast: developed, with depth
    Target half_;          ///< fast: the sea at half resolution
};

}  // namespace gull
