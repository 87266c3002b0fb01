#pragma once

#include "Engine/Gl/GraphicsDevice.h"
#include "Engine/Gl/Target.h"

#include <span>

namespace gull {

struct RenderContext;

// Passes over the pixels of a picture, without geometry.

/// Runs `state`'s program over every pixel of its target or its scissor rectangle. The depth test, if on,
/// compares `depth` (-1 near to 1 far).
void drawScreen(RenderContext& context, DrawState state, float depth = 0);

/// Runs a program whose vertex shader takes pixel coordinates over `areas` of the picture.
void drawAreas(RenderContext& context, DrawState state, std::span<const PixelArea> areas);

/// Averages the four samples of `from` within `parts` (in its pixels) into the first colour of `to`, where
/// pixel (0, 0) of `from` lands on (x, y). This is a program of our own because a software rasteriser
/// compiles its blit in every process and draws each area separately.
void resolve(RenderContext& context, const Target& from, std::span<const PixelArea> parts, const Target& to,
             int x, int y);

}  // namespace gull
