#pragma once

#include <cstdint>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <glm/vec4.hpp>
#include <memory>
#include <vector>

namespace gull {

/// An axis-aligned box; empty when min > max.
struct Box {
    glm::dvec3 min{1e30, 1e30, 1e30};
    glm::dvec3 max{-1e30, -1e30, -1e30};

    bool empty() const { return min.x > max.x; }
    void include(const glm::dvec3& point);
    void include(const Box& other);
    bool contains(const Box& other) const;  ///< false for an empty one
    glm::dvec3 size() const { return empty() ? glm::dvec3(0) : max - min; }
};

/// A triangle mesh: plain data, immutable once shared. Counter-clockwise faces look outward.
struct Geometry {
    struct Vertex {
        glm::vec3 position{0};
        glm::vec3 normal{0, 1, 0};
        glm::vec2 uv0{0};  ///< (0, 0) is the lower left corner of a picture, (1, 1) the upper right
        glm::vec2 uv1{0};
        glm::vec4 colour{1};  ///< linear; multiplies the albedo
        float roughness = 1;  ///< multiplies the material's
    };
    /// A run of indices drawn with one material of the node: the one at the element's position in the node's
    /// list, or the last when the list is shorter.
    struct Element {
        std::uint32_t first = 0;
        std::uint32_t count = 0;
    };

    std::vector<Vertex> vertices;
    std::vector<std::uint32_t> indices;
    std::vector<Element> elements;  ///< at least one unless the mesh is empty

    Box bounds() const;
    std::size_t triangleCount() const { return indices.size() / 3; }
};

using GeometryRef = std::shared_ptr<const Geometry>;

}  // namespace gull
