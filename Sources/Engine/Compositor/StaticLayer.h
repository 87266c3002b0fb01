#pragma once

#include "Engine/Compositor/DirtySquares.h"
#include "Engine/Compositor/StaticPasses.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace gull {

/// The picture of everything that stands still, drawn once through one view: lit by the sun, the same without
/// it, what a lamp needs to light it later, its depth, and all of it tone mapped. It is built in steps of a
/// few milliseconds, and a changed part is drawn again alone.
class StaticLayer {
  public:
    explicit StaticLayer(RenderContext& context) : context_(context), passes_(context) {}

    /// Forgets everything and starts to build the static content of `stage`, seen through `view`. The sun's
    /// shadow map has as many texels a side as the light asks for, `mostShadow` at most.
    void begin(const Stage& stage, const Viewpoint& view, int mostShadow);
    /// Builds on for about `budget` seconds (at least one step); true when complete. `stage` as in begin().
    bool build(const Stage& stage, double budget);
    /// Follows what was touched since it was begun or last refreshed; false when everything was. What changed
    /// is drawn again for about `budget` seconds a call (at least one step); its old picture stays until the
    /// new one is complete. Paint shows immediately where nothing else is being drawn.
    bool refresh(const Stage& stage, double budget);

    bool begun() const { return stage_ != 0; }
    bool complete() const { return begun() && done_; }
    /// Whether a change is not in the picture yet.
    bool pending() const { return work_.step != Step::done || !waiting_.empty(); }
    /// Whether it shows (or will show) this stage, whose static content has not changed as a whole since.
    bool showsContent(const Stage& stage) const;

    const Viewpoint& view() const { return passes_.view(); }
    StaticPictures pictures() const { return passes_.pictures(); }
    ReliefGrid& relief() { return passes_.relief(); }
    const ReliefGrid& relief() const { return passes_.relief(); }
    /// Where picture or depth changed since this was last asked; the whole picture as one area.
    std::vector<PixelArea> takeChanges() { return changes_.take(); }

  private:
    using Scene = StaticPasses::Scene;
    enum class Step { shadow, depth, relief, contact, surfaces, edges, bloom, picture, done };
    /// A part of the picture on its way from the shadow map to the tone-mapped picture.
    struct Work {
        PixelArea area;
        std::optional<Box> changed;  ///< what is new in the shadow map, world space; nothing: everything
        bool recast = true;          ///< what stands there changed, too
        PixelArea painted;           ///< also to be brought into the picture
        Step step = Step::done;
        std::size_t nextPart = 0;  ///< of those that the step is taken in
        bool hurried = true;       ///< the step is taken in many small parts
    };

    /// Works for `budget` seconds, at least one step.
    void work(const Scene& scene, double budget);
    /// A part of the step that it has come to: a few milliseconds.
    void takeStep(const Scene& scene);
    std::vector<PixelArea> partsOf(Step step, const Scene& scene) const;
    void drawPart(const Scene& scene, const PixelArea& part);
    /// Starts on what waits; nothing may be under way.
    void beginRedraw(const DrawList& list);
    /// Takes in what was touched: draws paint at once where it may, lets the rest wait.
    void follow(const std::vector<Stage::StillChange>& changes);
    void drawPicture(const PixelArea& area);

    RenderContext& context_;
    StaticPasses passes_;
    std::uint64_t stage_ = 0;  ///< Stage::id()
    std::uint64_t serial_ = 0;
    bool done_ = false;
    Work work_;
    std::vector<Box> waiting_;   ///< touched, and not being drawn yet
    std::uint64_t casters_ = 0;  ///< hash of what cast shadows when the map was drawn
    DirtySquares changes_;
};

}  // namespace gull
