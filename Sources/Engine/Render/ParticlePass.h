#pragma once

#include "Engine/Render/SurfacePass.h"

namespace gull {

/// Draws the particles of `item` at scene time `time` (seconds) as camera-facing squares.
void drawParticles(RenderContext& context, const SurfacePass& pass, const ParticleItem& item, double time);

}  // namespace gull
