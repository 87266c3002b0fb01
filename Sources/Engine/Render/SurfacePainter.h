#pragma once

#include "Engine/Render/DrawList.h"
#include "Engine/Render/Program.h"
#include "Engine/Render/RenderOptions.h"
#include "Engine/Render/TextureCache.h"

#include <cstdint>
#include <memory>
#include <span>
#include <unordered_map>

namespace gull {

/// How the surfaces of one pass are shaded.
struct Shading {
    enum class Output {
        linear,  ///< scene light into one target
        /// Lit, shade, surface and normal into four; lit alone where there is only one target. Sun shadows
        /// and contact shadows are always looked up: bind empty ones where there are none.
        kept,
        display,  ///< developed for the screen
        film      ///< a smooth surface, to be blended over the developed picture later
    };
    Output output = Output::linear;
    bool sunShadow = true;
    bool occlusion = false;       ///< reads the contact shadows of the picture
    std::span<const Lamp> lamps;  ///< those of the Frame block; borrowed
    bool bloom = false;           ///< a film takes the glow of the picture in
    bool plainFilm = false;       ///< no tone mapping, for cameras without it
    /// Many small triangles rather than many pixels. Of these what is opaque and what lets something through
    /// are drawn in one way, for the sake of few programs.
    bool small = false;
    bool matt = false;        ///< opaque surfaces but metals are lit at their vertices; for display
    bool waterDepth = false;  ///< water looks up how deep it is in the picture's depth
    Box hidden;               ///< what lies in it is not drawn, world space
};

/// Draws surfaces. A program is compiled for each combination that is asked for, the first time it is.
class SurfacePainter {
  public:
    SurfacePainter(VertexStages& stages, TextureCache& textures, const RenderOptions& options);

    /// Draws the chunks of `item` that touch `area` (pixels of the picture). Sets blending, culling and depth
    /// writing for it.
    void draw(const DrawItem& item, const Shading& shading, const Viewpoint& view, const PixelArea& area);

  private:
    const Program& program(const DrawItem& item, const Shading& shading);
    const Program& mattProgram(const DrawItem& item, const Shading& shading);
    void bindMissing(const Material& material);
    void setMean(const Program& program, const Material& material);
    void setMaterial(const Program& program, const DrawItem& item, TextureCache::Filter filter);

    VertexStages& stages_;
    TextureCache& textures_;
    const RenderOptions& options_;
    std::shared_ptr<Texture> white_, level_;  ///< maps that change nothing
    std::unordered_map<std::uint32_t, Program> programs_;
    std::unordered_map<std::uint32_t, Program> mattPrograms_;
};

/// A wide, smooth sheet of liquid: shaded as a film over what lies below.
bool isFilm(const DrawItem& item);

/// Leaves out the sides of `item` that face away, as its material asks.
void setCulling(const DrawItem& item);

/// Issues the draw calls for the chunks of `item` that touch `area` and stand out of `hidden`; its vertex
/// array is left bound.
void drawChunks(const DrawItem& item, const Viewpoint& view, const PixelArea& area, const Box& hidden = {});

}  // namespace gull
