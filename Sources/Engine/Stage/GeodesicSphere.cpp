#include "Engine/Log/Require.h"
#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"

#include <array>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>
#include <utility>
#include <vector>

namespace gull::primitives {

namespace {

constexpr double pi = std::numbers::pi;

using Triangle = std::array<glm::dvec3, 3>;

/// The faces of an icosahedron with edges of length 2, counter-clockwise seen from outside.
std::vector<Triangle> icosahedron() {
    const double golden = (1 + std::sqrt(5.0)) / 2;
    std::vector<glm::dvec3> corners;
    for (const double s : {-1.0, 1.0}) {
        for (const double t : {-golden, golden}) {
            corners.emplace_back(s, t, 0);
            corners.emplace_back(0, s, t);
            corners.emplace_back(t, 0, s);
        }
    }
    const auto areNeighbours = [](const glm::dvec3& p, const glm::dvec3& q) {
        return glm::distance(p, q) < 2.1;
    };
    std::vector<Triangle> faces;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        for (std::size_t j = i + 1; j < corners.size(); ++j) {
            for (std::size_t k = j + 1; k < corners.size(); ++k) {
                const glm::dvec3 a = corners[i];
                glm::dvec3 b = corners[j], c = corners[k];
                if (!areNeighbours(a, b) || !areNeighbours(b, c) || !areNeighbours(a, c)) continue;
                if (glm::dot(glm::cross(b - a, c - a), a + b + c) < 0) std::swap(b, c);
                faces.push_back({a, b, c});
            }
        }
    }
    return faces;
}

/// The triangle cut into segments x segments smaller ones of equal size, row by row from its first corner.
std::vector<Triangle> subdivided(const Triangle& face, int segments) {
    const double n = segments;
    const auto point = [&](int row, int column) {
        return face[0] * ((n - row) / n) + face[1] * ((row - column) / n) + face[2] * (column / n);
    };
    std::vector<Triangle> parts;
    for (int row = 0; row < segments; ++row) {
        for (int column = 0; column <= row; ++column) {
            parts.push_back({point(row, column), point(row + 1, column), point(row + 1, column + 1)});
            if (column < row) {
                parts.push_back({point(row, column), point(row + 1, column + 1), point(row, column + 1)});
            }
        }
    }
    return parts;
}

/// Longitude and latitude of a direction, each 0 to 1.
glm::dvec2 sphereUv(const glm::dvec3& n) {
    return {std::atan2(n.x, n.z) / (2 * pi) + 0.5, 0.5 + std::asin(n.y) / pi};
}

/// Projects a triangle onto the sphere about the origin and adds it; `faceted` gives it one normal.
void addSphereFace(MeshBuilder& mesh, const Triangle& face, double radius, bool faceted) {
    const Triangle n{glm::normalize(face[0]), glm::normalize(face[1]), glm::normalize(face[2])};
    const glm::dvec3 faceNormal = glm::normalize(glm::cross(n[1] - n[0], n[2] - n[0]));
    const glm::dvec2 middle = sphereUv(glm::normalize(n[0] + n[1] + n[2]));
    std::array<std::uint32_t, 3> index{};
    for (std::size_t k = 0; k < 3; ++k) {
        glm::dvec2 uv = sphereUv(n[k]);
        if (std::abs(n[k].y) > 1 - 1e-9) uv.x = middle.x;  // a pole has no longitude of its own
        uv.x -= std::round(uv.x - middle.x);               // faces across the seam run on instead of back
        index[k] = mesh.vertex(n[k] * radius, faceted ? faceNormal : n[k], uv);
    }
    mesh.triangle(index[0], index[1], index[2]);
}

}  // namespace

Geometry geodesicSphere(double radius, int segments, bool faceted) {
    require(radius > 0, "a geodesic sphere of {}", radius);
    require(segments >= 1, "a geodesic sphere of {} segments", segments);
    MeshBuilder mesh;
    for (const Triangle& face : icosahedron()) {
        for (const Triangle& part : subdivided(face, segments)) {
            addSphereFace(mesh, part, radius, faceted);
        }
    }
    return mesh.take();
}

}  // namespace gull::primitives
