#include "Engine/Stage/MeshBuilder.h"

#include <array>
#include <cmath>
#include <glm/geometric.hpp>
#include <glm/matrix.hpp>
#include <map>
#include <numbers>
#include <utility>

namespace gull {

std::uint32_t MeshBuilder::vertex(const glm::dvec3& position, const glm::dvec3& normal,
                                  const glm::dvec2& uv) {
    Geometry::Vertex vertex;
    vertex.position = glm::vec3(position);
    vertex.normal = glm::vec3(normal);
    vertex.uv0 = glm::vec2(uv);
    vertex.colour = colour_;
    geometry_.vertices.push_back(vertex);
    return static_cast<std::uint32_t>(geometry_.vertices.size() - 1);
}

void MeshBuilder::triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    geometry_.indices.insert(geometry_.indices.end(), {a, b, c});
}

void MeshBuilder::quad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    triangle(a, b, c);
    triangle(a, c, d);
}

void MeshBuilder::flatTriangle(const glm::dvec3& a, const glm::dvec3& b, const glm::dvec3& c) {
    const glm::dvec3 normal = glm::normalize(glm::cross(b - a, c - a));
    const std::uint32_t first = vertex(a, normal);
    vertex(b, normal);
    vertex(c, normal);
    triangle(first, first + 1, first + 2);
}

void MeshBuilder::append(const Geometry& geometry, const glm::dmat4& transform) {
    const auto base = static_cast<std::uint32_t>(geometry_.vertices.size());
    const glm::dmat3 normalTransform = glm::transpose(glm::inverse(glm::dmat3(transform)));
    const bool mirrored = glm::determinant(glm::dmat3(transform)) < 0;
    for (Geometry::Vertex vertex : geometry.vertices) {
        vertex.position = glm::vec3(transform * glm::dvec4(vertex.position, 1));
        vertex.normal = glm::vec3(glm::normalize(normalTransform * glm::dvec3(vertex.normal)));
        vertex.colour *= colour_;
        geometry_.vertices.push_back(vertex);
    }
    for (std::size_t i = 0; i + 2 < geometry.indices.size(); i += 3) {
        const std::uint32_t a = base + geometry.indices[i];
        const std::uint32_t b = base + geometry.indices[i + 1];
        const std::uint32_t c = base + geometry.indices[i + 2];
        mirrored ? triangle(a, c, b) : triangle(a, b, c);
    }
}

void MeshBuilder::endElement() {
    const auto end = static_cast<std::uint32_t>(geometry_.indices.size());
    if (end > elementStart_) geometry_.elements.push_back({elementStart_, end - elementStart_});
    elementStart_ = end;
}

Geometry MeshBuilder::take() {
    endElement();
    elementStart_ = 0;
    colour_ = glm::vec4(1);
    return std::exchange(geometry_, Geometry{});
}

namespace mesh {

Geometry displaced(Geometry geometry, const std::function<glm::dvec3(const glm::dvec3&)>& place) {
    for (Geometry::Vertex& vertex : geometry.vertices) {
        vertex.position = glm::vec3(place(glm::dvec3(vertex.position)));
    }
    return geometry;
}

Geometry withNormals(Geometry geometry, double creaseAngle) {
    // Every corner gets its own vertex, then the mean normal of those faces around its position that differ
    // from its own face by no more than the crease angle.
    struct Corner {
        glm::dvec3 areaNormal;
        glm::dvec3 faceNormal;
    };
    using Key = std::array<long, 3>;
    const auto keyOf = [](const glm::vec3& position) {
        return Key{std::lround(position.x * 1e5), std::lround(position.y * 1e5),
                   std::lround(position.z * 1e5)};
    };
    std::map<Key, std::vector<Corner>> cornersAt;
    std::vector<glm::dvec3> faceNormals;
    for (std::size_t i = 0; i + 2 < geometry.indices.size(); i += 3) {
        const glm::dvec3 a(geometry.vertices[geometry.indices[i]].position);
        const glm::dvec3 b(geometry.vertices[geometry.indices[i + 1]].position);
        const glm::dvec3 c(geometry.vertices[geometry.indices[i + 2]].position);
        const glm::dvec3 area = glm::cross(b - a, c - a);
        const double length = glm::length(area);
        const glm::dvec3 face = length > 0 ? area / length : glm::dvec3(0, 1, 0);
        faceNormals.push_back(face);
        for (std::size_t k = 0; k < 3; ++k) {
            cornersAt[keyOf(geometry.vertices[geometry.indices[i + k]].position)].push_back({area, face});
        }
    }
    const double least = std::cos(creaseAngle * std::numbers::pi / 180) - 1e-9;
    std::vector<Geometry::Vertex> vertices;
    vertices.reserve(geometry.indices.size());
    for (std::size_t i = 0; i < geometry.indices.size(); ++i) {
        Geometry::Vertex vertex = geometry.vertices[geometry.indices[i]];
        const glm::dvec3& own = faceNormals[i / 3];
        glm::dvec3 sum(0);
        for (const Corner& corner : cornersAt[keyOf(vertex.position)]) {
            if (glm::dot(corner.faceNormal, own) >= least) sum += corner.areaNormal;
        }
        const double length = glm::length(sum);
        vertex.normal = glm::vec3(length > 0 ? sum / length : own);
        geometry.indices[i] = static_cast<std::uint32_t>(i);
        vertices.push_back(vertex);
    }
    geometry.vertices = std::move(vertices);
    return geometry;
}

}  // namespace mesh

}  // namespace gull
