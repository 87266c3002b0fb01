#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Settings/AppSettings.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace gull {
namespace {

constexpr double coilRate = 24;               // the coil's easing toward the target, per second
constexpr glm::dvec2 velocityScale{16, -10};  // plot units to scene units; the scene's z points away from y
constexpr double trailSpacing = 0.012;        // plot distance between two marks of the trail
constexpr double meterRate = 18;              // the meter's easing, per second
constexpr double meterRest = 0.001;           // this near its goal the meter counts as arrived
constexpr double hudPeriod = 0.05;            // seconds between two refreshes of the HUD
constexpr double shownTideStep = 0.04;        // the tide clock is republished when it moved by more than this
constexpr double liftSeconds = 0.6;           // the rig's nod while it digs
constexpr double liftHeight = 0.7;            // its peak, scene units
constexpr double tickGap = 0.016;             // seconds; at most one pulse a frame

}  // namespace

void GameController::frame() {
    const double now = loop_.now();
    const double dt = std::clamp(now - lastFrame_, 0.0, largestStep);
    lastFrame_ = now;

    if (phase == Phase::playing) hunt_.advance(dt);
    easeCoil(now, dt);
    if (phase == Phase::playing) {
        sweep();
        reading_ = hunt_.reading(coil_);
        if (now >= busyUntil_) detect(dt);
        runTide(now);
    } else {
        reading_ = Reading::silent();
    }

    const double sinceDig = now - digStart_;
    const double lift = sinceDig < liftSeconds
                            ? liftHeight * std::sin(std::numbers::pi * std::min(sinceDig / liftSeconds, 1.0))
                            : 0;
    world_.tide = tideShare();
    world_.reduceMotion = settings_.reduceMotion();
    world_.update(now, dt, coil_, velocity_, lift, phase == Phase::playing ? reading_.strength : 0,
                  tintColour(reading_));
    refreshHud(dt);
}

/// Lets the coil follow the target, unless a dig holds it.
void GameController::easeCoil(double now, double dt) {
    const PlotPoint before = coil_;
    if (phase != Phase::playing || now >= busyUntil_) {
        const double share = 1 - std::exp(-coilRate * dt);
        coil_.x += (target_.x - coil_.x) * share;
        coil_.y += (target_.y - coil_.y) * share;
    }
    if (dt > 0) velocity_ = glm::dvec2(coil_.x - before.x, coil_.y - before.y) * velocityScale / dt;
}

void GameController::sweep() {
    if (lastSwept_.distance(coil_) <= trailSpacing) return;
    world_.trail.sweep(coil_);
    lastSwept_ = coil_;
}

/// The detector's output: ticks, the lock when it is right over something, the beginner's hints.
void GameController::detect(double dt) {
    if (clock_.advance(dt, reading_.strength, reading_.isTreasure())) pulse();
    if (reading_.isPinpoint && !wasPinpoint_) {
        feedback_.thump(1, 0.06, HapticPattern::levelChange);
        feedback_.play(Sound::lockOn, 0.8F);
    }
    wasPinpoint_ = reading_.isPinpoint;
    if (auto hint = tutorial_.advance(reading_, controls)) {
        const auto text = [this, hint = std::move(*hint), isSignal = tutorial_.stage() == 2] {
            const bool isSilent = !feedback_.muted && !feedback_.isHeard() && !feedback_.isFelt();
            return isSignal && isSilent ? TutorialHints::onSilentSignal(settings_.showTicks()) : hint;
        };
        toasts_.showAfterOpening(text, TutorialHints::hintSeconds);
    }
}

/// One detector tick: single for treasure; for everything else a second one follows, which tells them apart.
void GameController::pulse() {
    const int level = std::min(static_cast<int>(reading_.strength * 10), 9);
    const Colour tint = tintColour(reading_);
    if (reading_.isTreasure()) {
        tick(HapticPattern::alignment, tickGap, Sound::beep(level), 1.0F);
        world_.ripple(coil_, tint, reading_.strength, 1.0);
        return;
    }
    tick(HapticPattern::generic, tickGap, Sound::buzz(level), 1.0F);
    world_.ripple(coil_, tint, reading_.strength * 0.8, 1.0);
    later(PulseClock::pairGap, [this, level] {
        if (phase == Phase::playing) tick(HapticPattern::generic, 0, Sound::buzz(level), 0.85F);
    });
}

void GameController::tick(HapticPattern pattern, double minGap, const Sound& sound, float gain) {
    feedback_.haptic(pattern, minGap);
    feedback_.play(sound, gain);
    tickStamp = tickStamp + 1;
}

Colour GameController::tintColour(const Reading& reading) const {
    if (!spec->showsKind || !reading.item) return {0.55, 0.98, 0.92};
    return isTreasure(reading.item->kind) ? Colour{1.0, 0.76, 0.28} : Colour{0.55, 0.62, 0.78};
}

/// The last seconds, and the two ways in which a beach ends.
void GameController::runTide(double now) {
    if (countdown_.advance(hunt_.spec().tideSeconds - hunt_.elapsed()))
        feedback_.play(Sound::countdown, 0.8F);
    if (hunt_.isTideIn()) {
        beginFlood();
    } else if (hunt_.isAllFound() && now >= busyUntil_ &&
               std::ranges::all_of(world_.reveals(), [](const Reveal& reveal) { return reveal.done; })) {
        finish();
    }
}

void GameController::refreshHud(double dt) {
    hudClock_ += dt;
    const double goal = phase == Phase::playing ? reading_.strength : 0;
    const double eased = meter + std::min(meterRate * dt, 1.0) * (goal - meter);
    meter = std::abs(goal - eased) < meterRest ? goal : eased;
    if (hudClock_ < hudPeriod) return;
    hudClock_ = 0;
    const double shown = tideLeft();
    // The end is exact: the clock must not stop at a second that is over because of a last hundredth.
    if (std::abs(timeLeft - shown) > shownTideStep || (shown == 0 && timeLeft != 0)) timeLeft = shown;
    if (reading_.item) meterIsTreasure = reading_.isTreasure();
    changes_.willChange();
}

}  // namespace gull
