#pragma once

#include "Engine/Render/DirectPainter.h"
#include "Engine/Render/FramePainter.h"
#include "Engine/Render/KeptLayer.h"
#include "Engine/Render/Presenter.h"
#include "Engine/Render/Renderer.h"
#include "Engine/Render/SnapshotPainter.h"
#include "Engine/Render/Stopwatch.h"

#include <memory>
#include <optional>

namespace gull {

/// Decides what the window shows: the kept layer with what moves on it while the camera rests; the same
/// picture shifted while it shakes, stretched while a new size is being built; the whole stage drawn quickly
/// while the camera travels or nothing is kept yet.
class WindowPainter {
  public:
    WindowPainter(Studio& studio, SnapshotPainter& snapshots);

    /// Between the presenter's begin() and uncover().
    void draw(const Stage& stage, Presenter& window, RenderTier tier, bool wait);
    /// See Renderer.
    bool rehearse(const Stage& stage, RenderTier tier, double budget);
    bool settled() const { return settled_; }

  private:
    bool wantsBuilding(const Stage& stage, const Viewpoint& view, const Viewpoint& goal) const;
    double budgetLeft(const Viewpoint& view) const;
    void build(const Stage& stage, const Viewpoint& goal, RenderTier tier, double budget);
    void keepBuilding(const Stage& stage, const Viewpoint& goal, RenderTier tier, double budget);
    void present(const Target& picture, Presenter& window, const std::vector<PixelArea>& changes) const;
    void fade(Presenter& window, double time);

    Studio& studio_;
    SnapshotPainter& snapshots_;
    FramePainter frames_;
    DirectPainter direct_;
    std::unique_ptr<KeptLayer> shown_;
    std::unique_ptr<KeptLayer> next_;   ///< being built
    std::unique_ptr<KeptLayer> spare_;  ///< shows nothing that still is: to be begun anew, for its targets
    Stopwatch sinceBuilding_;           ///< began in a frame the last time
    double built_ = 0;                  ///< seconds it took
    std::optional<Viewpoint> last_;     ///< of the frame before
    std::optional<double> travelled_;   ///< stage time of the last frame drawn directly
    bool journeyRehearsed_ = false;     ///< what a flight takes is compiled
    bool settled_ = false;
};

/// How far apart two views of the same size and lens show the ground (y = 0), pixels, at most; large when
/// they cannot be compared.
double shift(const Viewpoint& a, const Viewpoint& b);
/// Maps a place in the picture through `to` (0 to 1, origin lower left, homogeneous) to the place in the
/// picture through `from` that shows the same point of the ground.
glm::dmat3 groundWarp(const Viewpoint& from, const Viewpoint& to);

}  // namespace gull
