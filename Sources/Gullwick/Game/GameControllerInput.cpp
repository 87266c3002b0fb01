#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <variant>

namespace gull {
namespace {

constexpr PlotPoint nudge{0.035, 0.05};  // how far an arrow key moves the target
constexpr double shortToast = 1.6;
constexpr double toastSeconds = 3.4;

/// The tile of the beach select under a plot point; the upper row is the far half of the plot.
int tileIndex(const PlotPoint& point) {
    constexpr int selectColumns = GameController::selectColumns;
    const int column = std::min(static_cast<int>(point.x * selectColumns), selectColumns - 1);
    return column + (point.y > 0.5 ? 1 : 1 + selectColumns);
}

template <typename... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;  // for compilers that do not deduce an aggregate's arguments

}  // namespace

// A view without a size, or a broken device, points nowhere.
void GameController::setTarget(const PlotPoint& target) {
    if (std::isfinite(target.x) && std::isfinite(target.y)) target_ = target;
}

void GameController::fingerMoved(double nx, double ny) {
    if (!std::isfinite(nx) || !std::isfinite(ny)) return;
    const PlotPoint point = PadMap::plotPoint(nx, ny);
    if (phase == Phase::selecting)
        hover(tileIndex(point));
    else
        target_ = point;
}

void GameController::arrive() {
    if (loop_.now() >= busyUntil_) coil_ = target_;
}

void GameController::click() {
    key(KeyAction::Confirm{});
}

void GameController::key(const KeyAction::Any& action) {
    std::visit(Overloaded{
                   [this](const KeyAction::Move& move) {
                       if (phase == Phase::selecting) {
                           const int column = (selection - 1) % selectColumns;
                           const int row = (selection - 1) / selectColumns;
                           hover((row + move.dy > 0 ? selectColumns : 0) +
                                 std::clamp(column + move.dx, 0, selectColumns - 1) + 1);
                       } else if (!isPaused) {
                           target_ = PlotPoint{target_.x + move.dx * nudge.x, target_.y + move.dy * nudge.y};
                           target_ = target_.clamped();
                       }
                   },
                   [this](KeyAction::Confirm) {
                       switch (phase.get()) {
                           case Phase::selecting:
                               openSelected();
                               break;
                           case Phase::finished:
                               earnedStars > 0 ? nextBeach() : restart();
                               break;
                           case Phase::playing:
                               isPaused ? resume() : dig();
                               break;
                           case Phase::intro:
                           case Phase::flooding:
                               break;
                       }
                   },
                   [this](KeyAction::Ping) { ping(); },
                   [this](KeyAction::Restart) {
                       if (phase != Phase::selecting) restart();
                   },
                   [this](KeyAction::Levels) { phase == Phase::selecting ? closeSelect() : openSelect(); },
                   [this](KeyAction::Next) { nextBeach(); },
                   [this](KeyAction::Back) { closeSelect(); },
                   [this](KeyAction::Pause) { isPaused ? resume() : pause(); },
               },
               action);
}

void GameController::hover(int tile) {
    if (tile == selection) return;
    selection = tile;
    refusedBeach = 0;
    feedback_.haptic(HapticPattern::alignment, 0.016);
    feedback_.play(Sound::tap, 1.0F);
}

void GameController::dig() {
    const double now = loop_.now();
    if (phase != Phase::playing || isPaused || now < busyUntil_) return;
    const Hunt::DigOutcome outcome = hunt_.dig(coil_);
    world_.dig(coil_, outcome);
    digStart_ = now;
    clock_ = PulseClock();  // the first signal after the dig ticks at once
    feedback_.play(Sound::shovel, 1.0F);
    std::visit(Overloaded{
                   [&](const Hunt::Treasure& treasure) { uncover(treasure.item, now); },
                   [&](const Hunt::Junk& junk) { discard(junk.item, now); },
                   [&](const Hunt::Nothing&) { missed(now); },
               },
               outcome);
}

void GameController::uncover(const BuriedItem& treasure, double now) {
    const bool isChest = treasure.kind == ItemKind::chest;
    busyUntil_ = now + 0.65;
    feedback_.thump(isChest ? 4 : 3, 0.06, HapticPattern::levelChange);
    later(0.3, [this, isChest] { feedback_.play(isChest ? Sound::chest : Sound::found, 1.0F); });

    // A kind listed twice fills its slots from the left.
    for (std::size_t slot = 0; slot < tray->size(); ++slot) {
        if (spec->treasures[slot] != treasure.kind || tray.get()[slot]) continue;
        tray.mutate([slot](std::vector<bool>& slots) { slots[slot] = true; });
        break;
    }
    lastFind = treasure.kind;
    findStamp = findStamp + 1;
    haul = hunt_.haul();
    tutorial_.end();
    toasts_.dropWaiting();
    if (static_cast<int>(hunt_.found().size()) == spec->need && !hunt_.isAllFound())
        showToast(message("Beach cleared! Keep going for the rest, or wait out the tide"), toastSeconds);
}

void GameController::discard(const BuriedItem& junk, double now) {
    busyUntil_ = now + 0.6;
    feedback_.thump(2, 0.08, HapticPattern::generic);
    later(0.22, [this] { feedback_.play(Sound::junk, 1.0F); });
    junkCount = static_cast<int>(hunt_.junkDug().size());
    if (shownJunkTip_) {
        showToast(marked(name(junk.kind)), shortToast);
    } else {
        shownJunkTip_ = true;
        showToast(message("{}. Junk ticks in pairs — tick-tick … tick-tick", marked(name(junk.kind))), 4.5);
    }
}

void GameController::missed(double now) {
    busyUntil_ = now + 0.4;
    feedback_.haptic(HapticPattern::generic, 0);
    feedback_.play(Sound::miss, 0.8F);
    ++missCount_;
    if (missCount_ == 1 || missCount_ == 4)
        showToast(message("Nothing here — dig where the ticks are fastest"), toastSeconds);
}

void GameController::ping() {
    if (phase != Phase::playing || isPaused) return;
    const std::optional<BuriedItem> nearest = hunt_.ping(coil_);
    if (!nearest) return;
    pings = hunt_.pings();
    world_.showPing(coil_, nearest->at);
    feedback_.play(Sound::ping, 1.0F);
    feedback_.haptic(HapticPattern::levelChange, 0);
    showToast(message("Ping — that way · cost {:.0f} s of tide", 5.0), 2.2);
}

}  // namespace gull
