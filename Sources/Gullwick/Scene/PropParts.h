#pragma once

#include "Engine/Stage/Node.h"

#include <glm/mat4x4.hpp>
#include <glm/vec3.hpp>

namespace gull::props {

using MaterialRef = std::shared_ptr<Material>;

/// Adds a mesh to `parent`.
Node& part(Node& parent, Geometry geometry, const MaterialRef& material, const glm::dvec3& at = {0, 0, 0},
           const glm::dvec3& angles = {0, 0, 0});
/// Adds one more copy of a shared mesh.
Node& part(Node& parent, const GeometryRef& geometry, const MaterialRef& material,
           const glm::dvec3& at = {0, 0, 0}, const glm::dvec3& angles = {0, 0, 0});
/// A point of the sand, raised by `above`.
glm::dvec3 onSand(double x, double z, double above = 0);
/// Moves the node to the middle of a segment, with its y axis along it.
glm::dmat4 alongSegment(const glm::dvec3& from, const glm::dvec3& to);
/// A timber of that cross-section between two points; `width` is kept as level as possible.
Geometry timber(const glm::dvec3& from, const glm::dvec3& to, double width, double thickness);
/// The mesh with its colour times `side`, blended toward `top` where it faces up: sun and rain bleach wood
/// from above.
Geometry weathered(Geometry wood, double side, double top);
/// A boulder of radius 1, the same for the same `seed`.
Geometry boulder(int segments, double seed, double roughness);

}  // namespace gull::props
