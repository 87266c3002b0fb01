#pragma once

#include "Engine/Gl/DrawState.h"
#include "Engine/Render/DrawList.h"
#include "Engine/Render/InverseToneMapping.h"
#include "Engine/Render/ProgramKey.h"

#include <span>

namespace gull {

struct RenderContext;

/// How the surfaces of a pass are shaded.
struct Shading {
    enum class Output {
        linear,  ///< scene light into one target
        /// Lit, shade, surface and normal into the static layer's four targets; only lit if there is one
        /// target. The shadows of sun and contacts are always looked up.
        staticLayer,
        display,  ///< tone mapped for the screen
        water     ///< water alone, to be blended over the tone-mapped picture later
    };
    Output output = Output::linear;
    bool sunShadow = true;
    bool contactShadows = false;
    std::span<const Lamp> lamps = {};  ///< the Frame block's lamps; borrowed
    bool bloom = false;                ///< water includes the glow of the picture
    bool noToneMapping = false;        ///< for cameras without it
    /// For many small triangles rather than many pixels. Opaque and blended surfaces share programs.
    bool small = false;
    bool matt = false;  ///< opaque surfaces other than metals are lit at their vertices; for display output
    bool waterDepth = false;  ///< water looks up its depth from the ground's depth
    Box hidden = {};          ///< anything inside is not drawn, world space
};

/// What the surfaces of a pass read besides their own maps. Without a shadow map or contact shadows they read
/// stand-ins that darken nothing, without a mirror one that shows nothing; the other missing textures are not
/// read.
struct SurfaceInputs {
    TextureRef environment;
    unsigned environmentSampler = 0;
    TextureRef sunShadow;
    TextureRef contactShadows;
    TextureRef groundDepth;  ///< depth of the ground under the water
    TextureRef groundLight;  ///< scene light of that ground
    TextureRef bloom;
    TextureRef waterMirror;  ///< see WaterMirror; the frame's block knows its level
};

/// Where and how the surfaces, the sky and the particles of a pass are drawn. The depth test passes at the
/// target's depth or nearer.
struct SurfacePass {
    DrawTarget target;
    unsigned frameUniforms = 0;
    const Viewpoint& view;  ///< borrowed
    SurfaceInputs inputs;
    Shading shading;
    InverseToneMapping emissive = {};  ///< keeps the colours of emissive materials
};

/// Draws the chunks of `item` that touch `area` (pixels of the picture).
void drawSurface(RenderContext& context, const SurfacePass& pass, const DrawItem& item,
                 const PixelArea& area);
/// The program that drawSurface() uses.
ProgramKey surfaceProgram(const Shading& shading, const DrawItem& item);

/// True for what is shown in its own colour, whatever the light.
bool isUnlit(const DrawItem& item);
/// True for a wide, smooth, blended surface such as the sea, which is shaded as water over what lies below.
bool isWater(const DrawItem& item);
/// True for water so thin that it hides nothing. It is left out where water is bottomless.
bool isFilm(const DrawItem& item);

}  // namespace gull
