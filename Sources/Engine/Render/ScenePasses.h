#pragma once

#include "Engine/Render/SurfacePass.h"

#include <span>

namespace gull {

class Stage;

/// Draws the stage's background where nothing is nearer.
void drawSky(RenderContext& context, const SurfacePass& pass, const Stage& stage);

/// Draws the blended surfaces of all layers in their common order, then particles, within `area`. `time`:
/// scene time, seconds.
void drawBlended(RenderContext& context, const SurfacePass& pass, std::span<const DrawLayer* const> layers,
                 const PixelArea& area, double time);

}  // namespace gull
