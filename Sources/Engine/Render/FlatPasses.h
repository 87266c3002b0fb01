#pragma once

#include "Engine/Gl/GraphicsDevice.h"
#include "Engine/Gl/Target.h"

#include <span>

namespace gull {

struct RenderContext;

// Passes over the pixels of a picture, without geometry.

/// Runs `state`'s program over every pixel of its target, or of its scissor rectangle. `depth` (-1 near to 1
/// far) is what the depth test compares, if it is on.
void drawScreen(RenderContext& context, DrawState state, float depth = 0);

/// Runs a program whose vertex shader takes pixels over `areas` of the picture.
void drawAreas(RenderContext& context, DrawState state, std::span<const PixelArea> areas);

/// Averages the four samples of `from` within `parts` (its own pixels) into `to`'s first colour, where the
/// pixel (0, 0) of `from` lands on (x, y). A program of our own: a software rasteriser compiles its blit
/// again in every process and draws each area by itself.
void resolve(RenderContext& context, const Target& from, std::span<const PixelArea> parts, const Target& to,
             int x, int y);

}  // namespace gull
