#pragma once

#include "Engine/Stage/Geometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/geometric.hpp>
#include <map>
#include <utility>

namespace gull {

/// Checks of what a mesh needs to look right, shared by everything that makes meshes.
namespace meshChecks {

using Key = std::array<long, 3>;

inline Key weld(const glm::vec3& p) {
    return {std::lround(p.x * 1e5), std::lround(p.y * 1e5), std::lround(p.z * 1e5)};
}

inline glm::dvec3 corner(const Geometry& mesh, std::size_t i) {
    return glm::dvec3(mesh.vertices.at(mesh.indices[i]).position);
}

/// Six times the enclosed volume is the sum of the determinants; positive when faces look outward.
inline double volume(const Geometry& mesh) {
    double sum = 0;
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        sum += glm::dot(corner(mesh, i), glm::cross(corner(mesh, i + 1), corner(mesh, i + 2)));
    }
    return sum / 6;
}

inline double smallestArea(const Geometry& mesh) {
    double smallest = 1e30;
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        const glm::dvec3 a = corner(mesh, i);
        smallest = std::min(smallest,
                            0.5 * glm::length(glm::cross(corner(mesh, i + 1) - a, corner(mesh, i + 2) - a)));
    }
    return smallest;
}

/// Edges that, with equal positions welded, do not occur exactly once in each direction.
inline int openEdges(const Geometry& mesh) {
    std::map<std::pair<Key, Key>, int> runs;
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        for (std::size_t k = 0; k < 3; ++k) {
            const Key from = weld(mesh.vertices.at(mesh.indices[i + k]).position);
            const Key to = weld(mesh.vertices.at(mesh.indices[i + (k + 1) % 3]).position);
            ++runs[{from, to}];
        }
    }
    int open = 0;
    for (const auto& [edge, count] : runs) {
        const auto back = runs.find({edge.second, edge.first});
        if (back == runs.end() || back->second != count) ++open;
    }
    return open;
}

/// Normals have length 1, and none points behind its face.
inline void expectSoundNormals(const Geometry& mesh) {
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        const glm::dvec3 a = corner(mesh, i);
        const glm::dvec3 face = glm::cross(corner(mesh, i + 1) - a, corner(mesh, i + 2) - a);
        for (std::size_t k = 0; k < 3; ++k) {
            const glm::dvec3 normal(mesh.vertices.at(mesh.indices[i + k]).normal);
            ASSERT_NEAR(glm::length(normal), 1, 1e-4);
            ASSERT_GT(glm::dot(normal, face), 0) << "triangle " << i / 3;
        }
    }
}

inline void expectElementsCoverEverything(const Geometry& mesh) {
    std::uint32_t next = 0;
    for (const Geometry::Element& element : mesh.elements) {
        EXPECT_EQ(element.first, next);
        next += element.count;
    }
    EXPECT_EQ(next, mesh.indices.size());
}

}  // namespace meshChecks

}  // namespace gull
