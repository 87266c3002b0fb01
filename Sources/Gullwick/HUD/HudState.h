#pragma once

#include "Engine/Language/Language.h"
#include "Gullwick/Game/GameController.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace gull {

/// All that the HUD knows of the game at one moment: the controller's published properties, by their names.
/// A plain value, so that two moments can be compared and any of them can be made up.
///
/// The same list stands in the controller on purpose: there each property notifies observers before it
/// changes and can be read by itself, which a published struct of all of them would not allow. A new one is
/// added there, here and in `of`.
struct HudState {
    using Phase = GameController::Phase;

    Phase phase = Phase::intro;
    BeachSpec spec = Campaign::beach(1);
    double timeLeft = 0;  ///< seconds
    std::vector<bool> tray;
    int junkCount = 0;
    double meter = 0;
    bool meterIsTreasure = true;
    std::optional<std::string> toast;  ///< in a pause, how to go on; in `language`
    CampaignProgress progress;
    int earnedStars = 0;
    bool isNewBest = false;
    int haul = 0;
    std::optional<ItemKind> lastFind;
    int findStamp = 0;
    int pings = 0;
    int selection = 1;
    int tickStamp = 0;
    bool isPaused = false;
    int refusedBeach = 0;
    bool isFirstLoss = false;
    Controls controls;
    bool showTicks = false;  ///< the player's switch
    Language language;       ///< in which all of it is written

    static HudState of(const GameController& game, bool showTicks, const Language& language = {});

    /// How many treasures were found.
    int finds() const;
    /// Whether the treasure of that slot was found; a slot that the tray lacks was not.
    bool isFound(std::size_t slot) const { return slot < tray.size() && tray[slot]; }
    /// Played on the last beach of the campaign.
    bool isLastBeach() const;
    bool isSelecting() const { return phase == Phase::selecting; }
    bool isFinished() const { return phase == Phase::finished; }

    bool operator==(const HudState&) const = default;
};

/// "3 / 24 ★" of the whole campaign.
std::string campaignTotal(const CampaignProgress& progress);

}  // namespace gull
