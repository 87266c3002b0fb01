#pragma once

#include "Engine/Render/AreaPass.h"
#include "Engine/Render/ContactShadows.h"
#include "Engine/Render/CopyPass.h"
#include "Engine/Render/Development.h"
#include "Engine/Render/EnvironmentCache.h"
#include "Engine/Render/FrameUniforms.h"
#include "Engine/Render/MeshCache.h"
#include "Engine/Render/ParticlePainter.h"
#include "Engine/Render/RenderOptions.h"
#include "Engine/Render/ResolvePass.h"
#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/ShadowMap.h"
#include "Engine/Render/StripPace.h"
#include "Engine/Render/SurfacePainter.h"
#include "Engine/Render/TextureCache.h"

#include <span>

namespace gull {

/// The tools that the window's picture and snapshots share: what is on the graphics card, and who draws with
/// it. Needs the renderer's context.
struct Studio {
    Studio();

    RenderOptions options;
    VertexStages stages;
    MeshCache meshes;
    TextureCache textures;
    EnvironmentCache environments;
    FrameUniforms uniforms;
    ScreenPass screen;
    AreaPass areas;
    ResolvePass resolve;
    CopyPass copy;
    StripPace pace;
    SurfacePainter surfaces;
    ParticlePainter particles;
    Development development;
    Program depth;     ///< depth alone, from the camera
    Program sunDepth;  ///< depth alone, from the sun
    Program sky;
    Program keptSky;
    Program displaySky;
    Program farthest;  ///< depth at half resolution
    Program paint;
    Program farAway;  ///< sets areas to the farthest depth
    ContactShadows::Programs contactShadows;

    /// Draws opaque depth alone into the bound target, within `area` of the picture.
    void drawDepth(const DrawLayer& layer, const Viewpoint& view, const PixelArea& area);
    /// Draws the stage's background where nothing is nearer.
    void drawSky(const Stage& stage, const Viewpoint& view, Shading::Output output);
    /// Draws blended surfaces and particles of all layers, in their common order.
    void drawBlended(std::span<const DrawLayer* const> layers, const Shading& shading, const Viewpoint& view,
                     const PixelArea& area, double time);
    void collectGarbage();
};

}  // namespace gull
