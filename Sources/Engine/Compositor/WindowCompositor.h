#pragma once

#include "Engine/Compositor/FastFrame.h"
#include "Engine/Compositor/FullFrame.h"
#include "Engine/Compositor/Presenter.h"
#include "Engine/Compositor/RenderTier.h"
#include "Engine/Compositor/StaticLayer.h"
#include "Engine/Compositor/Stopwatch.h"
#include "Engine/Compositor/WaterPace.h"
#include "Engine/Render/FlightPass.h"

#include <memory>
#include <optional>

namespace gull {

/// Decides what the window shows: the static layer with moving things on it while the camera rests; the same
/// picture moved during a shake and stretched while a new size is being built; the whole stage drawn quickly
/// while the camera travels or until there is a static layer.
class WindowCompositor {
  public:
    explicit WindowCompositor(RenderContext& context);

    /// Between the presenter's begin() and uncover().
    void draw(const Stage& stage, Presenter& window, RenderTier tier, BuildMode mode);
    /// See Renderer.
    void frameTook(double seconds) { pace_.frameTook(seconds); }
    bool settled() const { return settled_; }
    bool onlyWaterMoved() const { return settled_ && fast_.onlyWaterMoved(); }

  private:
    void dropOutdated(const Stage& stage, RenderTier tier, BuildMode mode);
    bool wantsBuilding(const Stage& stage, const Viewpoint& view, const Viewpoint& goal) const;
    double budgetLeft(const Viewpoint& view) const;
    void build(const Stage& stage, const Viewpoint& goal, RenderTier tier, double budget);
    void keepBuilding(const Stage& stage, const Viewpoint& goal, RenderTier tier, double budget);
    void showLayer(const Stage& stage, const Viewpoint& view, Presenter& window, RenderTier tier);
    void showTravel(const Stage& stage, const Viewpoint& view, double speed, Presenter& window,
                    RenderTier tier);
    void show(const Target& picture, Presenter& window, const std::vector<PixelArea>& changes) const;
    void fadeTravel(Presenter& window, double time);

    RenderContext& context_;
    FastFrame fast_;
    FullFrame full_;
    FlightPass flight_;
    WaterPace pace_;
    std::unique_ptr<StaticLayer> shown_;
    std::unique_ptr<StaticLayer> next_;   ///< being built
    std::unique_ptr<StaticLayer> spare_;  ///< outdated; to be reused for its targets
    Stopwatch sinceBuilding_;             ///< since building last began in a frame
    std::optional<double> built_;         ///< seconds that took; empty if the last frame built nothing
    std::optional<Viewpoint> last_;       ///< the previous frame's
    std::optional<double> travelled_;     ///< stage time of the last frame drawn as a flight
    bool settled_ = false;
};

}  // namespace gull
