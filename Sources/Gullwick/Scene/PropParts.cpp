#include "Gullwick/Scene/PropParts.h"

#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>

namespace gull::props {

Node& part(Node& parent, Geometry geometry, const MaterialRef& material, const glm::dvec3& at,
           const glm::dvec3& angles) {
    return part(parent, std::make_shared<const Geometry>(std::move(geometry)), material, at, angles);
}

Node& part(Node& parent, const GeometryRef& geometry, const MaterialRef& material, const glm::dvec3& at,
           const glm::dvec3& angles) {
    Node& node = parent.add(makeNode(geometry, {material}));
    node.position = at;
    node.eulerAngles = angles;
    return node;
}

glm::dvec3 onSand(double x, double z, double above) {
    return {x, Terrain::height(x, z) + above, z};
}

glm::dmat4 alongSegment(const glm::dvec3& from, const glm::dvec3& to) {
    const glm::dvec3 along = glm::normalize(to - from);
    const glm::dvec3 level = std::abs(along.y) < 0.999 ? glm::dvec3(0, 1, 0) : glm::dvec3(0, 0, 1);
    const glm::dvec3 x = glm::normalize(glm::cross(along, level));
    return {glm::dvec4(x, 0), glm::dvec4(along, 0), glm::dvec4(glm::cross(x, along), 0),
            glm::dvec4((from + to) / 2.0, 1)};
}

Geometry timber(const glm::dvec3& from, const glm::dvec3& to, double width, double thickness) {
    MeshBuilder mesh;
    mesh.append(primitives::box(width, glm::distance(from, to), thickness, 0.12 * std::min(width, thickness)),
                alongSegment(from, to));
    return mesh.take();
}

Geometry weathered(Geometry wood, double side, double top) {
    for (Geometry::Vertex& vertex : wood.vertices) {
        const auto light = static_cast<float>(side + (top - side) * std::max(vertex.normal.y, 0.0F));
        vertex.colour = {light, light, light, 1};
    }
    return wood;
}

Geometry boulder(int segments, double seed, double roughness) {
    const Geometry ball = mesh::displaced(primitives::geodesicSphere(1, segments), [&](const glm::dvec3& n) {
        // Broad lumps, then planes along which the stone split.
        const double lumps = std::sin(2.1 * n.x + 1.3 * n.y + seed) * std::cos(1.9 * n.z - seed * 0.7) +
                             0.5 * std::sin(4.3 * n.z + 3.1 * n.x + 2 * seed);
        const double splits = std::abs(std::sin(3.3 * n.y + 2.2 * n.x - seed)) +
                              std::abs(std::sin(3.9 * n.z - 2.6 * n.y + 1.7 * seed));
        const double grain = std::sin(9 * n.x + seed) * std::sin(10 * n.y) * std::sin(8 * n.z - seed);
        glm::dvec3 p = n * (1 + roughness * (0.5 * lumps + 0.35 * (splits - 1.2) + 0.25 * grain));
        // Faces where slabs broke off: everything beyond a plane is cut back to it.
        for (int k = 0; k < 9; ++k) {
            const double turn = 2.4 * k + seed, rise = std::sin(1.7 * k + 2 * seed) * 0.8;
            const glm::dvec3 plane = glm::normalize(glm::dvec3(std::cos(turn), rise, std::sin(turn)));
            const double beyond = glm::dot(p, plane) - (0.8 + 0.08 * std::sin(5.1 * k + seed));
            if (beyond > 0) p -= plane * (beyond * std::min(0.9, 4 * roughness));
        }
        return p;
    });
    return mesh::withNormals(ball, 16);
}

}  // namespace gull::props
