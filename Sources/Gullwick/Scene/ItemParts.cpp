#include "Gullwick/Scene/ItemParts.h"

#include "Engine/Stage/MeshBuilder.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/geometric.hpp>

namespace gull::itemParts {

namespace {

MaterialRef stone(const RGB& colour, const RGB& glow, double metal, double rough) {
    auto material = Materials::pbr(colour, metal, rough);
    material->emission = glow.colour();
    return material;
}

/// Cuts flat triangles whose normals lean away from their plane, each by another draw.
class Cutter {
  public:
    explicit Cutter(double radius) : radius_(radius) {}

    /// `lean`: how far the normals leave the plane, as a length beside the normal's own.
    void facet(const glm::dvec3& a, const glm::dvec3& b, const glm::dvec3& c, double lean) {
        glm::dvec3 plane = glm::cross(b - a, c - a);
        const bool outward = glm::dot(plane, a + b + c - glm::dvec3(0, 0.2 * radius_, 0)) > 0;
        plane = glm::normalize(outward ? plane : -plane);
        const glm::dvec3 off(draws_.unit() - 0.5, draws_.unit() - 0.5, draws_.unit() - 0.5);
        const glm::dvec3 normal = glm::normalize(plane + 2 * lean * off);
        // Darker toward the point, where light finds no way out.
        const double depth = std::clamp(1.05 + 0.5 * (a + b + c).y / (3 * radius_), 0.0, 1.2);
        constexpr std::array<double, 4> lights{0.22, 0.5, 0.95, 1.7};
        mesh_.setColour(glm::dvec3(depth * lights[static_cast<std::size_t>(draws_.unit() * 4)]));
        const std::uint32_t first = mesh_.vertex(a, normal);
        mesh_.vertex(b, normal);
        mesh_.vertex(c, normal);
        outward ? mesh_.triangle(first, first + 1, first + 2) : mesh_.triangle(first, first + 2, first + 1);
    }
    Geometry take() { return mesh_.take(); }

  private:
    MeshBuilder mesh_;
    double radius_;
    Xorshift draws_{97};
};

}  // namespace

MaterialRef gold(double rough) {
    return Materials::pbr(RGB{1, 0.78, 0.34}, 1, rough);
}
MaterialRef brass() {
    return Materials::pbr(RGB{0.86, 0.66, 0.36}, 1, 0.3);
}
MaterialRef iron() {
    return Materials::pbr(RGB{0.28, 0.25, 0.23}, 0.85, 0.6);
}
MaterialRef rust() {
    return Materials::pbr(RGB{0.45, 0.22, 0.1}, 0.4, 0.85);
}
MaterialRef aluminium() {
    return Materials::pbr(RGB{0.88, 0.89, 0.92}, 1, 0.2);
}

MaterialRef glass() {
    auto material = Materials::pbr(Colour{0.9, 0.95, 1, 0.18}, 0, 0.02);
    material->blend = Material::Blend::alpha;
    material->opacity = 0.35;
    material->writesDepth = false;
    return material;
}

MaterialRef ruby() {
    return stone({0.75, 0.04, 0.1}, {0.25, 0, 0.03}, 0.1, 0.05);
}
MaterialRef emerald() {
    return stone({0.05, 0.75, 0.38}, {0, 0.18, 0.08}, 0.15, 0.04);
}

Node& part(Node& parent, Geometry geometry, std::vector<MaterialRef> materials, const glm::dvec3& at,
           const glm::dvec3& angles) {
    Node& node =
        parent.add(makeNode(std::make_shared<const Geometry>(std::move(geometry)), std::move(materials)));
    node.position = at;
    node.eulerAngles = angles;
    return node;
}

void coarser(Node& node, Geometry geometry) {
    node.coarseGeometry = std::make_shared<const Geometry>(std::move(geometry));
}

Geometry cutStone(double radius, int facets) {
    Cutter cut(radius);
    const auto at = [&](double share, double y, double k) {
        const double turn = 2 * std::numbers::pi * k / facets;
        return glm::dvec3(share * radius * std::cos(turn), y * radius, share * radius * std::sin(turn));
    };
    const glm::dvec3 point = at(0, -0.95, 0), table = at(0, 0.42, 0);
    // The planes are those of shapes::gem: middles of chords, not of arcs.
    const double chord = std::cos(std::numbers::pi / facets);
    for (int k = 0; k < facets; ++k) {
        const glm::dvec3 low[] = {at(1, 0, k), at(1, 0, k + 1)};
        const glm::dvec3 high[] = {at(0.98, 0.08, k), at(0.98, 0.08, k + 1)};
        const glm::dvec3 top[] = {at(0.6, 0.42, k), at(0.6, 0.42, k + 1)};
        const glm::dvec3 lowMiddle = at(chord, 0, k + 0.5), highMiddle = at(0.98 * chord, 0.08, k + 0.5);

        const glm::dvec3 keel = glm::mix(lowMiddle, point, 0.42);
        cut.facet(low[0], lowMiddle, keel, 0.5);
        cut.facet(lowMiddle, low[1], keel, 0.5);
        cut.facet(low[0], keel, point, 0.35);
        cut.facet(low[1], keel, point, 0.35);

        cut.facet(low[0], low[1], high[1], 0.1);
        cut.facet(low[0], high[1], high[0], 0.1);

        const glm::dvec3 crown = at(0.79 * chord, 0.25, k + 0.5);
        cut.facet(high[0], highMiddle, crown, 0.35);
        cut.facet(highMiddle, high[1], crown, 0.35);
        cut.facet(high[0], crown, top[0], 0.25);
        cut.facet(high[1], crown, top[1], 0.25);
        cut.facet(top[0], crown, top[1], 0.4);

        const glm::dvec3 star = at(0.34, 0.42, k + 0.5);
        cut.facet(top[0], top[1], star, 0.3);
        cut.facet(top[0], star, table, 0.5);
        cut.facet(top[1], star, table, 0.5);
    }
    return cut.take();
}

}  // namespace gull::itemParts
