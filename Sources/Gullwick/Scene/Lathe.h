#pragma once

#include "Engine/Stage/Geometry.h"

#include <glm/vec3.hpp>
#include <vector>

namespace gull {

/// A point of the outline that a lathe turns.
struct ProfilePoint {
    double r = 0;       ///< distance from the axis
    double y = 0;       ///< height
    bool hard = false;  ///< a hard edge runs around here
};

/// Lathed and extruded meshes.
namespace shapes {

/// Revolves `profile`, listed bottom to top on the outside, about the y axis; a point with r = 0 closes a
/// pole. `flatAround` cuts flat facets instead of a smooth round. Texture coordinates: `uvScale` times
/// around, then the length along the profile from 0 to 1. Fewer than two points: an empty mesh.
Geometry lathe(const std::vector<ProfilePoint>& profile, int segments, bool flatAround, double uvScale);
/// A cut stone of that radius, table up, its point at y = -0.95 * radius.
Geometry gem(double radius, int facets);
/// A round bar of changing thickness along `path`, closed at both ends; `radii` has one radius a point, or
/// one for all. Texture coordinates: around, then along from 0 to 1.
Geometry bar(const std::vector<glm::dvec3>& path, const std::vector<double>& radii, int sides = 10);

}  // namespace shapes

}  // namespace gull
