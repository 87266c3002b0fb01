#include "Engine/Render/WindowPainter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace gull {

namespace {

constexpr double sameView = 0.05;    // pixels: too little to see
constexpr double stillView = 0.25;   // pixels: nobody sees a shake so faint, and bending would only blur
constexpr double shakenView = 1;     // pixels: nobody sees whether the sea moves too, unless from a flight
constexpr double nearView = 14;      // pixels: a shake
constexpr double fastView = 6;       // pixels a frame: blurs what is seen anyway
constexpr double frameGoal = 0.027;  // seconds from frame to frame while something is built
// Of what the rest of a frame takes, for building: slow machines arrive too.
constexpr double leastShare = 0.25;
constexpr double mostBudget = 0.012;  // seconds a frame; all of it once the camera stands still
constexpr double refreshBudget = 0.004;
constexpr double unhurried = std::numeric_limits<double>::infinity();
constexpr int mostShadow = 3072;  // of the fast tier: 15 MB less than 4096 and hard to tell from it
constexpr double fadeTime = 0.2;  // seconds, from the travelling picture to the kept one

/// World x, z on the ground to clip x, y, w.
glm::dmat3 groundToClip(const Viewpoint& view) {
    const glm::dmat4& m = view.viewProjection;
    auto column = [&](int c) { return glm::dvec3(m[c].x, m[c].y, m[c].w); };
    return {column(0), column(2), column(3)};
}

}  // namespace

glm::dmat3 groundWarp(const Viewpoint& from, const Viewpoint& to) {
    const glm::dmat3 toPlace(glm::dvec3(0.5, 0, 0), glm::dvec3(0, 0.5, 0), glm::dvec3(0.5, 0.5, 1));
    return toPlace * groundToClip(from) * glm::inverse(groundToClip(to)) * glm::inverse(toPlace);
}

double shift(const Viewpoint& a, const Viewpoint& b) {
    constexpr double apart = 1e9;
    if (!(a.size == b.size) || a.projection != b.projection) return apart;
    if (a.viewProjection == b.viewProjection) return 0;
    glm::dmat3 warp = groundWarp(a, b);
    double most = 0;
    // The corners and the middle of the lower three quarters, which show ground in any view that has some.
    for (double x : {0.0, 0.5, 1.0})
        for (double y : {0.0, 0.4, 0.75}) {
            glm::dvec3 p = warp * glm::dvec3(x, y, 1);
            if (!(p.z > 1e-6)) return apart;
            most = std::max(
                {most, std::abs(p.x / p.z - x) * a.size.width, std::abs(p.y / p.z - y) * a.size.height});
        }
    return most;
}

WindowPainter::WindowPainter(Studio& studio, SnapshotPainter& snapshots)
    : studio_(studio), snapshots_(snapshots), frames_(studio), direct_(studio) {}

void WindowPainter::draw(const Stage& stage, Presenter& window, RenderTier tier, bool wait) {
    const PixelSize size = window.size();
    const std::vector<PixelArea> whole{PixelArea::whole(size)};
    Viewpoint view = Viewpoint::of(stage, size);
    Viewpoint goal = stage.restingView ? view.standingAt(*stage.restingView) : view;
    bool gone = false;
    const double refreshing = wait || tier == RenderTier::full ? unhurried : refreshBudget;
    if (shown_ && !(shown_->showsContent(stage) && shown_->refresh(stage, refreshing))) {
        spare_ = std::move(shown_);
        gone = true;
    }
    if (next_ && !next_->showsContent(stage)) {
        spare_ = std::move(next_);
        gone = true;
    }
    if (gone) studio_.collectGarbage();  // with another beach the meshes of the last one go
    if (wait || wantsBuilding(stage, view, goal))
        build(stage, wait ? view : goal, tier, wait ? unhurried : budgetLeft(view));
    else
        built_ = 0;
    const double speed = last_ ? shift(*last_, view) : 0;
    last_ = view;

    double apart = shown_ ? shift(shown_->view(), view) : 1e9;
    bool resized = shown_ && !(shown_->view().size == size);
    settled_ = false;
    if (apart < nearView || resized) {
        if (wait) travelled_.reset();
        const bool isFast = tier == RenderTier::fast, shaken = apart > shakenView && !resized && !travelled_;
        const Target& picture =
            isFast ? frames_.drawFast(stage, *shown_, !shaken) : frames_.drawFull(stage, *shown_);
        if (apart < stillView || resized)
            present(picture, window, isFast && !travelled_ ? frames_.takeChanges() : whole);
        else
            window.bend(picture.colour(), groundWarp(shown_->view(), view));
        settled_ = !resized && apart < sameView && !shown_->pending();
        if (travelled_) fade(window, stage.time);
    } else if (tier == RenderTier::full) {
        present(snapshots_.draw(stage, size), window, whole);
    } else {
        present(direct_.draw(stage, view, speed > fastView), window, whole);
        travelled_ = stage.time;
    }
}

bool WindowPainter::rehearse(const Stage& stage, RenderTier tier, double budget) {
    if (!shown_ || !shown_->complete() || !shown_->showsContent(stage)) return false;
    if (tier == RenderTier::fast) {
        if (journeyRehearsed_ || travelled_) return frames_.rehearseFast(stage, *shown_, budget);
        journeyRehearsed_ = direct_.rehearse(stage, shown_->view(), budget);
        return false;
    }
    frames_.drawFull(stage, *shown_);
    return true;
}

bool WindowPainter::wantsBuilding(const Stage& stage, const Viewpoint& view, const Viewpoint& goal) const {
    if (shown_ && shift(shown_->view(), goal) < sameView) return false;
    // On the way to a place that is known, or standing still.
    return stage.restingView || (last_ && shift(*last_, view) < sameView);
}

/// What the rest of the last frame left of its time.
double WindowPainter::budgetLeft(const Viewpoint& view) const {
    if (last_ && shift(*last_, view) < sameView) return mostBudget;
    const double rest = sinceBuilding_.elapsed() - built_;
    return std::min(std::max(frameGoal - rest, leastShare * rest), mostBudget);
}

void WindowPainter::build(const Stage& stage, const Viewpoint& goal, RenderTier tier, double budget) {
    sinceBuilding_ = {};
    keepBuilding(stage, goal, tier, budget);
    built_ = sinceBuilding_.elapsed();
}

void WindowPainter::keepBuilding(const Stage& stage, const Viewpoint& goal, RenderTier tier, double budget) {
    if (shown_ && shift(shown_->view(), goal) < sameView) return;
    if (!next_ || shift(next_->view(), goal) >= sameView) {
        if (!next_) next_ = spare_ ? std::move(spare_) : std::make_unique<KeptLayer>(studio_);
        next_->begin(stage, goal, tier == RenderTier::fast ? mostShadow : std::numeric_limits<int>::max());
    }
    // The first frame that shows it fills the whole backdrop: enough for one frame.
    if (!next_->complete()) {
        const bool done = next_->build(stage, budget);
        if (!done || std::isfinite(budget)) return;
    }
    next_->refresh(stage, budget);
    shown_ = std::move(next_);
}

void WindowPainter::present(const Target& picture, Presenter& window,
                            const std::vector<PixelArea>& changes) const {
    if (picture.size() == window.size())
        window.copy(picture.colour(), changes);
    else
        window.stretch(picture.colour());
}

void WindowPainter::fade(Presenter& window, double time) {
    double left = 1 - (time - *travelled_) / fadeTime;
    if (left <= 0 || left > 1 || !direct_.picture()) {
        travelled_.reset();
        direct_.arrived();
        return;
    }
    settled_ = false;
    window.fade(direct_.picture().colour(), left);
}

}  // namespace gull
