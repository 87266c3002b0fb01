#pragma once

#include "Engine/Render/SurfacePass.h"

#include <span>

namespace gull {

class Stage;

/// Draws the stage's background where nothing is nearer.
void drawSky(RenderContext& context, const SurfacePass& pass, const Stage& stage);

/// Draws the blended surfaces of all layers that light shines on, in their common order, within `area`.
void drawBlended(RenderContext& context, const SurfacePass& pass, std::span<const DrawLayer* const> layers,
                 const PixelArea& area);
/// Draws unlit surfaces, blended ones in their common order, then particles over a finished picture, which
/// `pass` draws into with its depth: their colours reach the screen as given. `time`: scene time, seconds.
void drawUnlit(RenderContext& context, const SurfacePass& pass, std::span<const DrawLayer* const> layers,
               const PixelArea& area, double time);

}  // namespace gull
