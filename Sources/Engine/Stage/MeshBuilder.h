#pragma once

#include "Engine/Stage/Geometry.h"

#include <functional>
#include <glm/mat4x4.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

namespace gull {

/// Puts a mesh together vertex by vertex.
class MeshBuilder {
  public:
    /// Returns the vertex's index.
    std::uint32_t vertex(const glm::dvec3& position, const glm::dvec3& normal, const glm::dvec2& uv = {0, 0});
    /// Counter-clockwise as seen from outside.
    void triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    void quad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d);
    /// A triangle with vertices of its own and its face's normal.
    void flatTriangle(const glm::dvec3& a, const glm::dvec3& b, const glm::dvec3& c);
    /// Everything of `geometry`, placed by `transform`, joins the current element.
    void append(const Geometry& geometry, const glm::dmat4& transform = glm::dmat4(1));
    /// What was added since the last call becomes an element of its own; nothing added: no element.
    void endElement();
    /// The finished mesh; ends the last element. The builder is empty afterwards.
    Geometry take();

  private:
    Geometry geometry_;
    std::uint32_t elementStart_ = 0;
};

namespace mesh {

/// The mesh with every vertex moved to where `place` puts it; vertices of one position move together as long
/// as `place` is a function. Normals are left alone: see withNormals().
Geometry displaced(Geometry geometry, const std::function<glm::dvec3(const glm::dvec3&)>& place);
/// Normals anew from the faces: averaged over the faces that meet at a position, weighted by area, except
/// across edges sharper than `creaseAngle` degrees (0: flat facets, 180: smooth everywhere).
Geometry withNormals(Geometry geometry, double creaseAngle);

}  // namespace mesh

}  // namespace gull
