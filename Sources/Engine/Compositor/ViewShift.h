#pragma once

#include "Engine/Render/Viewpoint.h"

#include <glm/mat3x3.hpp>

namespace gull {

/// The largest distance in pixels between two views' pictures of the same point of the ground (y = 0), for
/// views of the same size and lens; a large number if they cannot be compared.
double shift(const Viewpoint& a, const Viewpoint& b);

/// Maps a place in the picture through `to` (0 to 1, origin lower left, homogeneous) to the place in the
/// picture through `from` that shows the same point of the ground.
glm::dmat3 groundWarp(const Viewpoint& from, const Viewpoint& to);

}  // namespace gull
