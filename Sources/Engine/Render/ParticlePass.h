#pragma once

#include "Engine/Render/SurfacePass.h"

namespace gull {

/// Draws what the particle system of `item` shows at scene time `time` (seconds) as camera-facing squares.
void drawParticles(RenderContext& context, const SurfacePass& pass, const ParticleItem& item, double time);

}  // namespace gull
