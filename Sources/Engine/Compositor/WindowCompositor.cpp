#include "Engine/Compositor/WindowCompositor.h"

#include "Engine/Compositor/ViewShift.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/SnapshotPass.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace gull {

namespace {

constexpr double sameView = 0.05;     // pixels: too little to see
constexpr double stillView = 0.25;    // pixels: a shake too faint to see; bending would only blur
constexpr double shakenView = 1;      // pixels: hides whether the sea moves, unless after a flight
constexpr double nearShare = 0.02;    // of the picture's height: a shake
constexpr double fastView = 6;        // pixels a frame: so fast that the picture blurs anyway
constexpr double frameGoal = 0.0205;  // seconds from frame to frame while a layer is built
// Share of the rest of a frame for building, so that slow and busy machines get there too: in a flight, and
// once the camera stands still.
constexpr double flightShare = 0.25, restShare = 1;
constexpr double mostBudget = 0.012;  // seconds a frame where that is more
constexpr double mostRest = 0.5;      // seconds; more is a pause, not a slow machine
constexpr double refreshBudget = 0.004;
constexpr double unhurried = std::numeric_limits<double>::infinity();
constexpr int mostShadow = 3072;  // of the fast tier: 15 MB less than 4096 and hard to tell from it
constexpr double fadeTime = 0.2;  // seconds, from the flight's picture to the static layer's
constexpr double fastShare = 0.4, slowShare = 0.5;  // of the picture's size, in a flight

}  // namespace

WindowCompositor::WindowCompositor(RenderContext& context)
    : context_(context), fast_(context), full_(context), flight_(context) {}

void WindowCompositor::draw(const Stage& stage, Presenter& window, RenderTier tier, BuildMode mode) {
    const Viewpoint view = Viewpoint::of(stage, window.size());
    const Viewpoint goal = stage.restingView ? view.standingAt(*stage.restingView) : view;
    const bool complete = mode == BuildMode::complete;
    dropOutdated(stage, tier, mode);
    if (complete || wantsBuilding(stage, view, goal))
        build(stage, complete ? view : goal, tier, complete ? unhurried : budgetLeft(view));
    else
        built_.reset();
    const double speed = last_ ? shift(*last_, view) : 0;
    last_ = view;
    settled_ = false;
    const bool resized = shown_ && !(shown_->view().size == view.size);
    if (shown_ && (resized || shift(shown_->view(), view) < nearShare * view.size.height)) {
        if (complete) travelled_.reset();
        showLayer(stage, view, window, tier);
    } else {
        showTravel(stage, view, speed, window, tier);
    }
}

/// Sets outdated layers aside and updates the layer on display.
void WindowCompositor::dropOutdated(const Stage& stage, RenderTier tier, BuildMode mode) {
    const bool patient = mode == BuildMode::complete || tier == RenderTier::full;
    bool outdated = false;
    if (shown_ &&
        !(shown_->showsContent(stage) && shown_->refresh(stage, patient ? unhurried : refreshBudget))) {
        spare_ = std::move(shown_);
        outdated = true;
    }
    if (next_ && !next_->showsContent(stage)) {
        spare_ = std::move(next_);
        outdated = true;
    }
    if (outdated) context_.collectGarbage();  // frees the meshes of the last beach
}

/// Shows the layer with moving things on it, or bent by a shake.
void WindowCompositor::showLayer(const Stage& stage, const Viewpoint& view, Presenter& window,
                                 RenderTier tier) {
    const double apart = shift(shown_->view(), view);
    const bool resized = !(shown_->view().size == view.size), isFast = tier == RenderTier::fast;
    const bool shaken = apart > shakenView && !resized && !travelled_;
    const Target& picture =
        isFast ? fast_.draw(stage, *shown_, shaken ? 0 : pace_.pixels()) : full_.draw(stage, *shown_);
    if (apart < stillView || resized)
        show(picture, window,
             isFast && !travelled_ ? fast_.takeChanges() : std::vector{PixelArea::whole(window.size())});
    else
        window.bend(picture.colour(), groundWarp(shown_->view(), view));
    settled_ = !resized && apart < sameView && !shown_->pending();
    if (travelled_) fadeTravel(window, stage.time);
}

/// Shows the whole stage, drawn from wherever the camera is.
void WindowCompositor::showTravel(const Stage& stage, const Viewpoint& view, double speed, Presenter& window,
                                  RenderTier tier) {
    const std::vector<PixelArea> whole{PixelArea::whole(window.size())};
    if (tier == RenderTier::full) {
        show(drawSnapshot(context_, stage, window.size()), window, whole);
        return;
    }
    show(flight_.draw(stage, view, speed > fastView ? fastShare : slowShare), window, whole);
    travelled_ = stage.time;
}

bool WindowCompositor::wantsBuilding(const Stage& stage, const Viewpoint& view, const Viewpoint& goal) const {
    if (shown_ && shift(shown_->view(), goal) < sameView) return false;
    // On the way to a known place, or standing still.
    return stage.restingView || (last_ && shift(*last_, view) < sameView);
}

/// The seconds of its time that the rest of the last frame left.
double WindowCompositor::budgetLeft(const Viewpoint& view) const {
    if (!built_) return mostBudget;
    const double rest = std::min(sinceBuilding_.elapsed() - *built_, mostRest);
    if (last_ && shift(*last_, view) < sameView) return std::max(mostBudget, restShare * rest);
    return std::max(std::min(frameGoal - rest, mostBudget), flightShare * rest);
}

void WindowCompositor::build(const Stage& stage, const Viewpoint& goal, RenderTier tier, double budget) {
    sinceBuilding_ = {};
    keepBuilding(stage, goal, tier, budget);
    built_ = sinceBuilding_.elapsed();
}

void WindowCompositor::keepBuilding(const Stage& stage, const Viewpoint& goal, RenderTier tier,
                                    double budget) {
    if (shown_ && shift(shown_->view(), goal) < sameView) return;
    if (!next_ || shift(next_->view(), goal) >= sameView) {
        if (!next_) next_ = spare_ ? std::move(spare_) : std::make_unique<StaticLayer>(context_);
        next_->begin(stage, goal, tier == RenderTier::fast ? mostShadow : std::numeric_limits<int>::max());
    }
    // The first frame to show it fills the whole water layer, which is enough for one frame.
    if (!next_->complete()) {
        const bool done = next_->build(stage, budget);
        if (!done || std::isfinite(budget)) return;
    }
    next_->refresh(stage, budget);
    shown_ = std::move(next_);
}

void WindowCompositor::show(const Target& picture, Presenter& window,
                            const std::vector<PixelArea>& changes) const {
    if (picture.size() == window.size())
        window.copy(picture.colour(), changes);
    else
        window.stretch(picture.colour());
}

void WindowCompositor::fadeTravel(Presenter& window, double time) {
    const double left = 1 - (time - *travelled_) / fadeTime;
    if (left <= 0 || left > 1 || !flight_.picture()) {
        travelled_.reset();
        flight_.arrived();
        return;
    }
    settled_ = false;
    window.fade(flight_.picture().colour(), left);
}

}  // namespace gull
