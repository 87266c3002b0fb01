#pragma once

#include "Engine/Views/View.h"
#include "Gullwick/HUD/HudState.h"
#include "Gullwick/HUD/ItemIcons.h"

#include <string>

namespace gull {

/// How the beach ended: a headline and a verdict by the stars earned, the treasures, the figures, and the
/// keys that lead on.
struct ResultCard {
    const HudState& game;
    ItemIcons& icons;

    std::string headline() const;
    std::string verdict() const;
    /// Named views: card, card.stars, card.slot.0 and so on, card.figures, card.hints,
    /// card.lesson.
    View body() const;

  private:
    bool isPassed() const { return game.earnedStars >= 1; }
    View treasures() const;
    View figures() const;
    View hints() const;
    /// What to do differently, after the first beach that was not passed.
    View lesson() const;
};

}  // namespace gull
