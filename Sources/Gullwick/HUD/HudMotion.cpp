#include "Gullwick/HUD/HudMotion.h"

#include <algorithm>
#include <utility>

namespace gull {

namespace {

/// The toast to show. The game's own are for a beach alone; notices are said in any phase.
std::optional<HudPose::Toast> toastOf(const HudState& state) {
    const bool isCovered = state.isFinished() || state.isSelecting();
    if (state.notice) return HudPose::Toast{*state.notice, 1, isCovered};
    if (state.toast && !isCovered) return HudPose::Toast{*state.toast, 1, false};
    return std::nullopt;
}

/// Reduced motion takes the swing out of a spring.
Curve curveFor(const Spring& spring, bool reduceMotion) {
    return reduceMotion ? withoutOvershoot(spring) : Curve(spring);
}

}  // namespace

HudPose HudPose::atRest(const HudState& state) {
    HudPose pose;
    pose.bars = state.isSelecting() ? 0 : 1;
    pose.bottomBar = state.isFinished() ? 0 : 1;
    pose.card = state.isFinished() ? 1 : 0;
    pose.select = state.isSelecting() ? 1 : 0;
    pose.pause = state.isPaused ? 1 : 0;
    if (auto toast = toastOf(state)) pose.toasts.push_back(std::move(*toast));
    for (std::size_t i = 0; i < state.spec.treasures.size(); ++i) pose.slots.push_back(state.isFound(i));
    for (int i = 0; i < tiles; ++i) pose.tile[static_cast<std::size_t>(i)] = state.selection == i + 1;
    return pose;
}

void HudMotion::follow(const HudState& state, double now, bool reduceMotion) {
    if (!last_) {
        const HudPose rest = HudPose::atRest(state);
        bars_.jumpTo(rest.bars);
        bottomBar_.jumpTo(rest.bottomBar);
        card_.jumpTo(rest.card);
        select_.jumpTo(rest.select);
        pause_.jumpTo(rest.pause);
        for (const HudPose::Toast& toast : rest.toasts)
            toasts_.push_back({toast.text, Animated(1), toast.isLow});
        for (const double slot : rest.slots) slots_.emplace_back(slot);
        std::transform(rest.tile.begin(), rest.tile.end(), tile_.begin(),
                       [](double value) { return Animated(value); });
    } else {
        followPhase(state, now);
        followToast(state, now);
        followFinds(state, now, reduceMotion);
        followTick(state, now);
        for (std::size_t i = 0; i < tile_.size(); ++i) {
            const bool selected = state.selection == static_cast<int>(i) + 1;
            // The cursor's first place is not a move.
            if (last_->isSelecting()) {
                tile_[i].moveTo(selected, curveFor(tileSpring, reduceMotion), now);
            } else {
                tile_[i].jumpTo(selected);
            }
        }
    }
    followPopup(state, now);
    last_ = state;
}

void HudMotion::followPhase(const HudState& state, double now) {
    const HudPose rest = HudPose::atRest(state);
    const TimingCurve curve = TimingCurve::easeOut(phaseSeconds);
    bars_.moveTo(rest.bars, curve, now);
    bottomBar_.moveTo(rest.bottomBar, curve, now);
    card_.moveTo(rest.card, curve, now);
    select_.moveTo(rest.select, curve, now);
    pause_.moveTo(rest.pause, curve, now);
}

void HudMotion::followToast(const HudState& state, double now) {
    // A toast that leaves with its phase fades at the phase's pace.
    const bool samePhase = state.phase == last_->phase;
    const TimingCurve curve = TimingCurve::easeOut(samePhase ? toastSeconds : phaseSeconds);
    const std::optional<HudPose::Toast> wanted = toastOf(state);
    std::erase_if(toasts_, [&](const Toast& toast) {
        return toast.opacity.goal() == 0 && !toast.opacity.isMoving(now);
    });
    bool found = false;
    for (Toast& toast : toasts_) {
        const bool stays = wanted && toast.text == wanted->text && toast.isLow == wanted->isLow;
        found = found || stays;
        toast.opacity.moveTo(stays, curve, now);
    }
    if (!wanted || found) return;
    toasts_.push_back({wanted->text, Animated(0), wanted->isLow});
    toasts_.back().opacity.moveTo(1, curve, now);
}

void HudMotion::followFinds(const HudState& state, double now, bool reduceMotion) {
    const std::size_t count = state.spec.treasures.size();
    // Another beach has another tray, whose slots begin in their current state.
    const bool sameBeach = state.spec == last_->spec && slots_.size() == count;
    if (!sameBeach) slots_.assign(count, Animated(0));
    for (std::size_t i = 0; i < count; ++i) {
        if (sameBeach) {
            slots_[i].moveTo(state.isFound(i), curveFor(slotSpring, reduceMotion), now);
        } else {
            slots_[i].jumpTo(state.isFound(i));
        }
    }
}

void HudMotion::followPopup(const HudState& state, double now) {
    const int before = last_ ? last_->findStamp : state.findStamp;
    if (state.findStamp != before && state.lastFind) {
        popupShown_ = state.lastFind;
        popupAlpha_.jumpTo(0);
        popupLift_.jumpTo(0);
        const TimingCurve rise = TimingCurve::easeOut(popupRiseSeconds);
        popupAlpha_.moveTo(1, rise, now, popupRiseDelay);
        popupLift_.moveTo(popupRise, rise, now, popupRiseDelay);
        popupLeaves_ = now + popupLeaveDelay;
    }
    const bool playEnds = last_ && last_->phase == HudState::Phase::playing && state.phase != last_->phase;
    if (playEnds && popupAlpha_.goal() > 0) {
        // The next thing has the player's whole attention; a pop-up that has not appeared yet stays away.
        if (popupAlpha_.value(now) > 0)
            popupAlpha_.moveTo(0, TimingCurve::easeOut(popupCutSeconds), now);
        else
            popupAlpha_.jumpTo(0);
        popupLift_.jumpTo(popupLift_.value(now));
        popupLeaves_.reset();
    }
    if (!popupLeaves_ || now < *popupLeaves_) return;
    // However late this is noticed, it began when it was due.
    const TimingCurve leave = TimingCurve::easeIn(popupLeaveSeconds);
    popupAlpha_.moveTo(0, leave, *popupLeaves_);
    popupLift_.moveTo(popupLeave, leave, *popupLeaves_);
    popupLeaves_.reset();
}

void HudMotion::followTick(const HudState& state, double now) {
    if (state.tickStamp != last_->tickStamp) tickUntil_ = now + tickSeconds;
}

HudPose HudMotion::pose(double now) const {
    HudPose pose;
    pose.bars = bars_.value(now);
    pose.bottomBar = bottomBar_.value(now);
    pose.card = card_.value(now);
    pose.select = select_.value(now);
    pose.pause = pause_.value(now);
    for (const Toast& toast : toasts_) {
        const double opacity = toast.opacity.value(now);
        if (opacity > 0) pose.toasts.push_back({toast.text, opacity, toast.isLow});
    }
    for (const Animated& slot : slots_) pose.slots.push_back(slot.value(now));
    std::transform(tile_.begin(), tile_.end(), pose.tile.begin(),
                   [now](const Animated& tile) { return tile.value(now); });
    pose.popup = {popupShown_, popupLift_.value(now), popupAlpha_.value(now)};
    pose.tick = now < tickUntil_ ? 1 : 0;
    return pose;
}

bool HudMotion::isMoving(double now) const {
    const auto moves = [now](const Animated& value) { return value.isMoving(now); };
    return moves(bars_) || moves(bottomBar_) || moves(card_) || moves(select_) || moves(pause_) ||
           moves(popupAlpha_) || moves(popupLift_) || popupLeaves_ || now < tickUntil_ ||
           std::any_of(slots_.begin(), slots_.end(), moves) ||
           std::any_of(tile_.begin(), tile_.end(), moves) ||
           std::any_of(toasts_.begin(), toasts_.end(),
                       [&](const Toast& toast) { return moves(toast.opacity); });
}

}  // namespace gull
