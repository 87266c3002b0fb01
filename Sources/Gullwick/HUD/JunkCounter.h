#pragma once

#include "Engine/Views/View.h"
#include "Gullwick/HUD/HudState.h"
#include "Gullwick/HUD/ItemIcons.h"

namespace gull {

/// How much junk was dug up on this beach.
struct JunkCounter {
    static constexpr double width = 210;  ///< of the panel, points

    const HudState& game;
    ItemIcons& icons;

    /// Named views: junk, junk.icon.
    View body() const;
};

}  // namespace gull
