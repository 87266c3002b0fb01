#pragma once

#include "Engine/Stage/Geometry.h"
#include "Gullwick/Scene/Shoreline.h"

/// Strips along the beach that the surf is drawn with.
namespace gull::SurfShapes {

/// How far the film on wet sand lies above it: less than anything that is drawn on the sand.
inline constexpr double filmHeight = 0.025;

/// A breaker `depth` deep in the x-y plane, landward at negative y: its crest wanders, breaks in some places
/// and not in others, and has soft edges. `phase` makes one unlike the other.
GeometryRef breaker(double depth, double phase);

/// Foam `depth` deep along `shore`, the waterline at `level`, in the space of a node that lies flat at height
/// `base` and at `middle` in z. Its landward edge lies on the sand.
GeometryRef foam(const Shoreline& shore, double depth, double base, double middle);

/// The film that the swash leaves on the sand, in world space: from below the lowest water that a swash up to
/// `top` falls back to, at `bottom`, to a little beyond `top`, where it ends.
GeometryRef film(const Shoreline& bottom, const Shoreline& top);

}  // namespace gull::SurfShapes
