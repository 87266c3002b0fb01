#pragma once

#include "Engine/Compositor/DirtySquares.h"
#include "Engine/Compositor/StaticPasses.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace gull {

/// The picture of everything that stands still, drawn once through one view: its light with and without the
/// sun, the surface data with which a lamp can light it later, its depth, and the tone-mapped whole. It is
/// built in steps of a few milliseconds, and a changed part is redrawn on its own.
class StaticLayer {
  public:
    explicit StaticLayer(RenderContext& context) : context_(context), passes_(context) {}

    /// Discards everything and starts to build the static content of `stage`, seen through `view`. The sun's
    /// shadow map has as many texels a side as the light asks for, but at most `mostShadow`.
    void begin(const Stage& stage, const Viewpoint& view, int mostShadow);
    /// Continues to build for about `budget` seconds (at least one step); true when complete. `stage` as in
    /// begin().
    bool build(const Stage& stage, double budget);
    /// Follows what was touched since begin() or the last refresh(); false if everything was. Changed parts
    /// are redrawn for about `budget` seconds a call (at least one step); the old picture stays until the new
    /// one is complete. Paint shows immediately where nothing else is being drawn.
    bool refresh(const Stage& stage, double budget);

    bool begun() const { return stage_ != 0; }
    bool complete() const { return begun() && done_; }
    /// Whether some change is not in the picture yet.
    bool pending() const { return work_.step != Step::done || !waiting_.empty(); }
    /// Whether it shows (or will show) this stage and the stage's static content as a whole has not changed
    /// since.
    bool showsContent(const Stage& stage) const;

    const Viewpoint& view() const { return passes_.view(); }
    StaticPictures pictures() const { return passes_.pictures(); }
    ReliefGrid& relief() { return passes_.relief(); }
    const ReliefGrid& relief() const { return passes_.relief(); }
    /// The areas where picture or depth changed since the last call; the whole picture as one area.
    std::vector<PixelArea> takeChanges() { return changes_.take(); }

  private:
    using Scene = StaticPasses::Scene;
    enum class Step { shadow, sky, mirror, depth, relief, contact, surfaces, edges, bloom, picture, done };
    /// A part of the picture on its way from the shadow map to the tone-mapped picture.
    struct Work {
        PixelArea area;
        std::optional<Box> changed;  ///< what changed in the shadow map, world space; empty: everything
        bool recast = true;          ///< the things there changed, too
        PixelArea painted;           ///< painted area to update in the picture, too
        Step step = Step::done;
        std::size_t nextPart = 0;  ///< of the step's parts
        bool hurried = true;       ///< the step is split into many small parts
    };

    /// Works for `budget` seconds, at least one step.
    void work(const Scene& scene, double budget);
    /// Draws the next part of the current step: a few milliseconds.
    void takeStep(const Scene& scene);
    std::vector<PixelArea> partsOf(Step step, const Scene& scene) const;
    void drawPart(const Scene& scene, const PixelArea& part);
    /// Starts on the waiting changes; nothing may be under way.
    void beginRedraw(const DrawList& list);
    /// Takes in the changes: draws paint at once where possible and lets the rest wait.
    void follow(const std::vector<Stage::StillChange>& changes);
    void drawPicture(const PixelArea& area);

    RenderContext& context_;
    StaticPasses passes_;
    std::uint64_t stage_ = 0;  ///< Stage::id()
    std::uint64_t serial_ = 0;
    bool done_ = false;
    Work work_;
    std::vector<Box> waiting_;   ///< touched, but not being drawn yet
    std::uint64_t casters_ = 0;  ///< hash of the shadow casters when the map was drawn
    DirtySquares changes_;
};

}  // namespace gull
