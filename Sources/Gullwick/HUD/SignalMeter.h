#pragma once

#include "Engine/Views/View.h"
#include "Gullwick/HUD/HudState.h"

#include <string>

namespace gull {

/// The detector's signal as twelve rising bars and, if the detector has a display, its source: treasure
/// appears as plain metal, junk carries a question mark.
struct SignalMeter {
    static constexpr int bars = 12;
    static constexpr double width = 210;      ///< of the panel, points
    static constexpr double faintest = 0.02;  ///< signals below it are not judged

    const HudState& game;
    double tick = 0;  ///< the tick mark, 0 to 1; drawn only if the player wants it

    /// The number of lit bars; more than exist for a signal above 1.
    long long lit() const;
    Colour litColour() const;
    std::string caption() const;
    /// Named views: signal, signal.bar.0 and so on, signal.tick.
    View body() const;

  private:
    View tickMark() const;
};

}  // namespace gull
