#pragma once

#include "Engine/Views/View.h"
#include "Gullwick/HUD/HudState.h"
#include "Gullwick/HUD/ItemIcons.h"

#include <cstddef>
#include <vector>

namespace gull {

/// A slot for each treasure of the beach, filled as the treasures are found, with a mark after the last one
/// needed to pass, and the totals below.
struct Tray {
    static constexpr double slotSize = 52;  ///< points
    static constexpr double slotSpacing = 8;

    const HudState& game;
    ItemIcons& icons;
    const std::vector<double>& sprung;  ///< how far each slot has filled, 0 to 1 and a little beyond

    /// Named views: tray, tray.slot.0 and so on, tray.need.
    View body() const;

  private:
    View slot(std::size_t index) const;
};

}  // namespace gull
