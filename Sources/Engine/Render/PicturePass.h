#pragma once

#include "Engine/Gl/DrawState.h"

#include <glm/mat3x3.hpp>

#include <span>

namespace gull {

struct RenderContext;

// Copies of a picture onto a target. Whole rectangles, the shortest of programs and a picture of
// Format::bgra8: a software rasteriser has a path for that which is several times quicker than a blit.

/// Pixel by pixel, within `areas`; the target's viewport has the picture's size.
void copyPicture(RenderContext& context, const DrawTarget& target, TextureRef picture,
                 std::span<const PixelArea> areas);
/// Stretched over the viewport, and blended where `opacity` is below 1.
void stretchPicture(RenderContext& context, const DrawTarget& target, TextureRef picture, double opacity = 1);
/// Slightly bent: a place of the target (0 to 1, origin lower left, homogeneous) shows the place `toPicture`
/// of it of the picture, which goes on beyond its edge as it ends. Right within a tenth of a pixel as long as
/// nothing moves by more than some twenty.
void bendPicture(RenderContext& context, const DrawTarget& target, TextureRef picture,
                 const glm::dmat3& toPicture);

}  // namespace gull
