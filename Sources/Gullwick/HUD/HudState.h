#pragma once

#include "Engine/Language/Language.h"
#include "Gullwick/Game/GameController.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace gull {

/// Everything the HUD knows of the game at one moment: the controller's published properties, under their
/// names. A plain value, so that states can be compared and made up.
///
/// The controller deliberately holds the same list: there each property notifies observers before it changes
/// and can be read by itself, which one published struct would not allow. Add a new property there, here and
/// in `of`.
struct HudState {
    using Phase = GameController::Phase;

    Phase phase = Phase::intro;
    BeachSpec spec = Campaign::beach(1);
    double timeLeft = 0;  ///< seconds
    std::vector<bool> tray;
    int junkCount = 0;
    double meter = 0;
    bool meterIsTreasure = true;
    std::optional<std::string> toast;   ///< in a pause, how to go on; in `language`
    std::optional<std::string> notice;  ///< the window's own words, said in any phase; in `language`
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
    Language language;       ///< the language of all texts

    static HudState of(const GameController& game, bool showTicks, const Language& language = {});

    /// How many treasures were found.
    int finds() const;
    /// Whether the treasure of that slot was found; false for a slot that the tray lacks.
    bool isFound(std::size_t slot) const { return slot < tray.size() && tray[slot]; }
    /// True on the last beach of the campaign.
    bool isLastBeach() const;
    bool isSelecting() const { return phase == Phase::selecting; }
    bool isFinished() const { return phase == Phase::finished; }

    bool operator==(const HudState&) const = default;
};

/// "3 / 24 ★" for the whole campaign.
std::string campaignTotal(const CampaignProgress& progress);

}  // namespace gull
