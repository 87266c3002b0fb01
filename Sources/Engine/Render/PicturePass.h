#pragma once

#include "Engine/Gl/DrawState.h"

#include <glm/mat3x3.hpp>

#include <span>

namespace gull {

struct RenderContext;

// Copies of a picture onto a target: whole rectangles, the shortest of programs and a picture of
// Format::bgra8, for which a software rasteriser has a path several times quicker than a blit.

/// Copies pixel by pixel within `areas`; the target's viewport has the picture's size.
void copyPicture(RenderContext& context, const DrawTarget& target, TextureRef picture,
                 std::span<const PixelArea> areas);
/// Stretches a premultiplied picture of any size over the viewport and blends it within `areas`.
void blendPicture(RenderContext& context, const DrawTarget& target, TextureRef picture,
                  std::span<const PixelArea> areas);
/// Stretches the picture over the viewport and blends it where `opacity` is below 1.
void stretchPicture(RenderContext& context, const DrawTarget& target, TextureRef picture, double opacity = 1);
/// Bends the picture slightly: each place of the target (0 to 1, origin lower left, homogeneous) shows the
/// picture at `toPicture` times that place. Beyond its edge the picture continues with its last pixels. Exact
/// to a tenth of a pixel if nothing moves by more than about twenty pixels.
void bendPicture(RenderContext& context, const DrawTarget& target, TextureRef picture,
                 const glm::dmat3& toPicture);

}  // namespace gull
