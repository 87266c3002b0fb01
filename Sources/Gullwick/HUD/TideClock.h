#pragma once

#include "Engine/Views/View.h"
#include "Gullwick/HUD/HudState.h"

namespace gull {

/// The remaining tide: a wave and the time, a bar that empties, and the pings used. Turns to a warning colour
/// in the last seconds of play.
struct TideClock {
    static constexpr double urgentSeconds = 15;
    static constexpr double barWidth = 150;  ///< points
    static constexpr double barHeight = 4;

    const HudState& game;

    bool isUrgent() const;
    /// Of the line that counts the pings, the lowest one, for any number of two digits; points.
    double pingsWidth() const;
    /// The share of the tide that is left, 0 to 1.
    double share() const;
    /// Named views: tide, tide.bar (the track), tide.left (what is left of it).
    View body() const;
};

}  // namespace gull
