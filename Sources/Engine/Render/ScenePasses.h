#pragma once

#include "Engine/Render/SurfacePass.h"

#include <span>

namespace gull {

class Stage;

/// Draws the stage's background where nothing is nearer.
void drawSky(RenderContext& context, const SurfacePass& pass, const Stage& stage);

/// Draws the depth of the water among `items`, so that of several sheets of water only the nearest is then
/// drawn.
void drawWaterDepth(RenderContext& context, const SurfacePass& pass, std::span<const DrawItem* const> items,
                    const PixelArea& area);

/// Draws the lit blended surfaces of all layers in their common order, within `area`; see drawUnlit().
void drawBlended(RenderContext& context, const SurfacePass& pass, std::span<const DrawLayer* const> layers,
                 const PixelArea& area);
/// Draws unlit blended surfaces in their common order, then particles. `pass` must have display output, and
/// its target a finished picture and the depth of everything that may hide them; so their colours reach the
/// screen as given. `time`: scene time, seconds.
void drawUnlit(RenderContext& context, const SurfacePass& pass, std::span<const DrawLayer* const> layers,
               const PixelArea& area, double time);

/// Draws unlit opaque surfaces once more, over a picture that was tone mapped with them in it: the brightest
/// colours are beyond what tone mapping shows. As drawUnlit().
void drawUnlitOpaque(RenderContext& context, const SurfacePass& pass,
                     std::span<const DrawLayer* const> layers, const PixelArea& area);

}  // namespace gull
