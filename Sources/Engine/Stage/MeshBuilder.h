#pragma once

#include "Engine/Stage/Geometry.h"

#include <functional>
#include <glm/mat4x4.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

namespace gull {

/// Builds a mesh vertex by vertex.
class MeshBuilder {
  public:
    /// The colour, linear, of the vertices added from here on; it multiplies that of appended ones.
    void setColour(const glm::dvec3& colour) { colour_ = glm::vec4(colour, 1); }
    /// Returns the vertex's index.
    std::uint32_t vertex(const glm::dvec3& position, const glm::dvec3& normal, const glm::dvec2& uv = {0, 0});
    /// Counter-clockwise as seen from outside.
    void triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    void quad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d);
    /// A triangle with its own vertices and the normal of its face.
    void flatTriangle(const glm::dvec3& a, const glm::dvec3& b, const glm::dvec3& c);
    /// Adds all of `geometry`, transformed by `transform`, to the current element.
    void append(const Geometry& geometry, const glm::dmat4& transform = glm::dmat4(1));
    /// Makes an element of what was added since the last call, if anything was.
    void endElement();
    /// The finished mesh; ends the last element. The builder is empty afterwards.
    Geometry take();

  private:
    Geometry geometry_;
    std::uint32_t elementStart_ = 0;
    glm::vec4 colour_{1};
};

namespace mesh {

/// The mesh with every vertex moved by `place`, which must return equal results for equal positions to keep
/// the mesh closed. Normals are unchanged: see withNormals().
Geometry displaced(Geometry geometry, const std::function<glm::dvec3(const glm::dvec3&)>& place);
/// Recomputes normals from the faces: the area-weighted average over the faces that meet at a position,
/// except across edges sharper than `creaseAngle` degrees (0: flat facets, 180: smooth everywhere).
Geometry withNormals(Geometry geometry, double creaseAngle);

}  // namespace mesh

}  // namespace gull
