#pragma once

#include "Engine/Render/DirtySquares.h"
#include "Engine/Render/EdgeCells.h"
#include "Engine/Render/PaintLayer.h"
#include "Engine/Render/ReliefGrid.h"
#include "Engine/Render/Studio.h"

#include <cstdint>
#include <optional>

namespace gull {

/// The picture of what rests, drawn once through one view: lit by the sun, the same without it, what a lamp
/// needs to light it later, its depth, and all of it developed for the screen. It is built in steps of a few
/// milliseconds, and a changed part is drawn again alone.
class KeptLayer {
  public:
    explicit KeptLayer(Studio& studio)
        : studio_(studio),
          contact_(studio.screen, studio.options, studio.contactShadows),
          paint_(studio.textures, studio.paint) {}

    /// Forgets everything and starts to build what `stage` keeps, seen through `view`. The sun's shadow map
    /// has as many texels a side as the light asks for, `mostShadow` at most.
    void begin(const Stage& stage, const Viewpoint& view, int mostShadow);
    /// Builds on for about `budget` seconds (at least one step); true when complete. `stage` as in begin().
    bool build(const Stage& stage, double budget);
    /// Follows what was touched since it was begun or last refreshed; false when everything was. What changed
    /// is drawn again for about `budget` seconds a call (at least one step); its old picture stays until the
    /// new one is complete. Paint shows at once where nothing else is being drawn.
    bool refresh(const Stage& stage, double budget);

    bool begun() const { return stage_ != nullptr; }
    bool complete() const { return begun() && done_; }
    /// Whether a change is not in the picture yet.
    bool pending() const { return work_.step != Step::done || !waiting_.empty(); }
    /// Whether it shows (or will show) this stage, whose kept content has not changed as a whole since.
    bool showsContent(const Stage& stage) const;
    const Viewpoint& view() const { return view_; }

    const Target& light() const { return light_; }      ///< lit, shade, surface, normal; all without paint
    const Target& picture() const { return picture_; }  ///< developed
    unsigned depth() const { return depth_.depth(); }
    const Target& depthTarget() const { return depth_; }
    const Target& farthest() const { return farthest_; }  ///< depth at half resolution, never too near
    unsigned bloom() const { return bloom_; }
    unsigned paint() const { return paint_.texture(); }
    ReliefGrid& relief() { return relief_; }
    const ReliefGrid& relief() const { return relief_; }
    /// Where picture() or depth() changed since this was last asked; the whole picture as one area.
    std::vector<PixelArea> takeChanges() { return changes_.take(); }
    const ShadowMap& shadow() const { return shadow_; }

  private:
    enum class Step { shadow, depth, relief, contact, tiles, edges, glow, develop, done };
    /// A part of the picture on its way from the shadow map to the developed picture.
    struct Work {
        PixelArea area;
        std::optional<Box> changed;  ///< what is new in the shadow map, world space; nothing: everything
        bool recast = true;          ///< what stands there changed, too
        PixelArea painted;           ///< to be developed besides
        Step step = Step::done;
        std::size_t nextPart = 0;  ///< of those that the step is taken in
        bool hurried = true;       ///< the step is taken in many small parts
    };

    void prepare(const Stage& stage, DrawList& list);
    /// Works for `budget` seconds, at least one step.
    void work(const Stage& stage, const DrawList& list, double budget);
    /// A part of the step that it has come to: a few milliseconds.
    void takeStep(const Stage& stage, const DrawList& list);
    std::vector<PixelArea> partsOf(Step step, const DrawList& list) const;
    void drawPart(const Stage& stage, const DrawList& list, const PixelArea& part);
    /// Starts on what waits; nothing may be under way.
    void beginRedraw(const DrawList& list);
    /// Takes in what was touched: draws paint at once where it may, lets the rest wait.
    void follow(const std::vector<Stage::KeptChange>& changes);
    void drawDepth(const DrawList& list, const PixelArea& area);
    void readDepth(const DrawList& list, const PixelArea& area);
    /// One sample a pixel, which is enough where no edge is.
    void drawTile(const Stage& stage, const DrawList& list, const PixelArea& area);
    /// Draws the light again with four samples a pixel in the cells of `area` that show an edge.
    void drawEdges(const Stage& stage, const DrawList& list, const PixelArea& area);
    void drawSurfaces(const Stage& stage, const DrawList& list, const PixelArea& area);
    /// Whether the background may be seen there, by the depth read before: not where a film, which is
    /// bottomless there, lies before it and all that stands around it. Its program need not be compiled then.
    bool showsSky(const DrawList& list, const PixelArea& area) const;
    /// What shines over its surroundings, the sun in the sea included: that moves, but hardly from its place.
    /// Where it cannot be seen the sea is left out, and its program need not be compiled then.
    void findGlow(const DrawList& list);
    /// Keeps the glow of what `light` shows.
    void keepGlow(const Target& light);
    /// Lays the paint on and makes the picture.
    void develop(const PixelArea& area);
    int shadowSize(const DrawList& list) const;  ///< `list` has a sun
    Shading shading(const DrawList& list) const;

    Studio& studio_;
    const Stage* stage_ = nullptr;  ///< only compared, never read through
    Viewpoint view_;
    std::uint64_t serial_ = 0;
    bool done_ = false;
    Work work_;
    std::vector<Box> waiting_;  ///< touched, and not being drawn yet

    std::uint64_t casters_ = 0;  ///< what threw shadows when the map was drawn
    FrameBlock block_;
    int mostShadow_ = 0;
    ShadowMap shadow_;
    ContactShadows contact_;
    Target depth_;
    std::vector<float> depths_;  ///< what depth_ holds, lowest row first
    ReliefGrid relief_;
    EdgeCells edges_;
    Target farthest_;
    Target light_;
    PaintLayer paint_;
    Target tile_;  ///< multisampled
    Target picture_;
    DirtySquares changes_;
    Target glow_;  ///< keeps the bloom, which the development's own buffers do not
    unsigned bloom_ = 0;
};

}  // namespace gull
