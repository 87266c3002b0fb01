#include "Gullwick/HUD/HudState.h"

#include <fmt/format.h>

#include <algorithm>

namespace gull {

namespace {

Message pausedToast(const Controls& controls) {
    if (controls.kind == Controls::Kind::controller)
        return message("Paused — {} to go on", Controls::label(controls.buttons.dig));
    return message("Paused — P or a click to go on");
}

}  // namespace

HudState HudState::of(const GameController& game, bool showTicks, const Language& language) {
    HudState state;
    state.phase = game.phase;
    state.spec = game.spec;
    state.timeLeft = game.timeLeft;
    state.tray = game.tray;
    state.junkCount = game.junkCount;
    state.meter = game.meter;
    state.meterIsTreasure = game.meterIsTreasure;
    if (game.toast.get()) state.toast = language.tr(*game.toast.get());
    state.progress = game.progress;
    state.earnedStars = game.earnedStars;
    state.isNewBest = game.isNewBest;
    state.haul = game.haul;
    state.lastFind = game.lastFind;
    state.findStamp = game.findStamp;
    state.pings = game.pings;
    state.selection = game.selection;
    state.tickStamp = game.tickStamp;
    state.isPaused = game.isPaused;
    if (state.isPaused) state.toast = language.tr(pausedToast(game.controls));
    state.refusedBeach = game.refusedBeach;
    state.isFirstLoss = game.isFirstLoss;
    state.controls = game.controls;
    state.showTicks = showTicks;
    state.language = language;
    return state;
}

int HudState::finds() const {
    return static_cast<int>(std::count(tray.begin(), tray.end(), true));
}

bool HudState::isLastBeach() const {
    return spec.number == static_cast<int>(Campaign::beaches().size());
}

std::string campaignTotal(const CampaignProgress& progress) {
    return fmt::format("{} / {} ★", progress.totalStars(), Campaign::beaches().size() * 3);
}

}  // namespace gull
