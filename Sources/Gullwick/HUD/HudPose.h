#pragma once

#include "Gullwick/HUD/HudState.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace gull {

/// The state of everything that moves in the HUD at one instant: opacities (0 to 1), the pop-up's rise, the
/// springs of slots and tiles.
struct HudPose {
    /// Tiles of the beach select.
    static constexpr int tiles = GameController::selectColumns * GameController::selectRows;

    struct Popup {
        std::optional<ItemKind> shown;
        double lift = 0;  ///< points
        double alpha = 0;
        bool operator==(const Popup&) const = default;
    };
    /// A line that appears or fades; while one replaces another there are two.
    struct Toast {
        std::string text;
        double opacity = 1;
        bool isLow = false;  ///< at the window's bottom, below a card or the beach select
        bool operator==(const Toast&) const = default;
    };

    double bars = 1;       ///< top and bottom bar, and the shade behind them
    double bottomBar = 1;  ///< on top of `bars`
    double card = 0;       ///< result card and its dimming
    double select = 0;     ///< beach select
    double pause = 0;      ///< the dimming of a paused beach
    std::vector<Toast> toasts;
    Popup popup;
    std::vector<double> slots;         ///< 0 empty to 1 found; springs past 1
    std::array<double, tiles> tile{};  ///< 0 at rest to 1 under the cursor; springs past both
    double tick = 0;                   ///< the mark that blinks with every tick

    bool operator==(const HudPose&) const = default;

    /// Everything at its end values: no pop-up, springs and fades at rest.
    static HudPose atRest(const HudState& state);
};

}  // namespace gull
