#include "Gullwick/HUD/HudState.h"

#include <fmt/format.h>

#include <algorithm>

namespace gull {

namespace {

std::string pausedToast(const Controls& controls) {
    if (controls.kind == Controls::Kind::controller)
        return fmt::format("Paused — {} to go on", controls.buttons.dig);
    return "Paused — P or a click to go on";
}

}  // namespace

HudState HudState::of(const GameController& game, bool showTicks) {
    HudState state;
    state.phase = game.phase;
    state.spec = game.spec;
    state.timeLeft = game.timeLeft;
    state.tray = game.tray;
    state.junkCount = game.junkCount;
    state.meter = game.meter;
    state.meterIsTreasure = game.meterIsTreasure;
    state.toast = game.toast;
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
    if (state.isPaused) state.toast = pausedToast(game.controls);
    state.refusedBeach = game.refusedBeach;
    state.isFirstLoss = game.isFirstLoss;
    state.controls = game.controls;
    state.showTicks = showTicks;
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

std::string upperCase(std::string_view words) {
    std::string upper(words);
    for (char& letter : upper) {
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    }
    return upper;
}

}  // namespace gull
