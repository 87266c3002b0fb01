#pragma once

#include "Engine/Views/Drawing.h"
#include "Gullwick/HUD/HudPose.h"

namespace gull {

/// The map of the campaign: a tile for each of the eight beaches in its own colours, with its stars or a
/// lock; the one under the cursor swells. It only displays: the game moves the cursor.
struct BeachSelect {
    static constexpr int columns = GameController::selectColumns;
    static constexpr int rows = GameController::selectRows;
    static constexpr double tileWidth = 138;  ///< points
    static constexpr double tileHeight = 124;
    static constexpr double spacing = 14;
    static constexpr double swelling = 0.06;

    const HudState& game;
    const std::array<double, HudPose::tiles>& swollen;  ///< 0 to 1 under the cursor, and a little beyond

    /// Named views: select, select.tile.1 to select.tile.8, select.hint.
    View body() const;
    /// The number of the beach whose tile is drawn under the point (points of the window).
    static std::optional<int> tileAt(const Drawing& drawing, double x, double y);

  private:
    /// How to use the select, or what opens the locked beach that was requested.
    View hint() const;
    View tile(const BeachSpec& beach, double swell) const;
};

}  // namespace gull
