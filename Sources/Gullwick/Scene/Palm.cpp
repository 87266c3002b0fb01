#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Dressing.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/PropParts.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>

namespace gull::Dressing {

namespace {

constexpr double pi = std::numbers::pi;
constexpr double trunkHeight = 4.3;
constexpr int trunkPieces = 18;
constexpr int fronds = 12;

/// A frond along +x from the origin: a midrib that rises by `rise`, then droops by `droop`, with leaflets on
/// both sides. Both are shares of its length, about 2.4.
Geometry frond(double rise, double droop) {
    constexpr double length = 2.4;
    const auto rib = [&](double s) {
        return glm::dvec3(length * (s - 0.16 * s * s * droop), length * (rise * s - droop * std::pow(s, 2.1)),
                          0);
    };
    MeshBuilder mesh;
    constexpr int ribPieces = 9;
    for (int i = 0; i < ribPieces; ++i) {
        const double from = static_cast<double>(i) / ribPieces, to = static_cast<double>(i + 1) / ribPieces;
        const double thick = 0.045 * (1 - 0.75 * from);
        mesh.append(props::timber(rib(from), rib(to), thick, thick * 0.7));
    }
    constexpr int leaflets = 22;
    for (int i = 0; i < leaflets; ++i) {
        const double s = 0.1 + 0.9 * i / (leaflets - 1);
        const glm::dvec3 foot = rib(s);
        const glm::dvec3 ahead = glm::normalize(rib(s + 0.01) - rib(s - 0.01));
        // Longest a third of the way out, short and pointing ahead at the tip.
        const double reach = 0.78 * std::pow(std::sin(pi * (0.14 + 0.8 * s)), 0.8);
        const double sweep = 0.45 + 0.75 * s * s;
        for (const double side : {1.0, -1.0}) {
            const glm::dvec3 across(0, 0, side);
            const glm::dvec3 out = glm::normalize(ahead * sweep + across);
            const glm::dvec3 bend = foot + out * (0.5 * reach) + glm::dvec3(0, 0.05 * reach, 0);
            const glm::dvec3 tip = foot + out * (0.96 * reach) - glm::dvec3(0, 0.3 * reach, 0);
            const glm::dvec3 wide = ahead * 0.052;
            glm::dvec3 up = glm::normalize(glm::cross(across, ahead)) * side;
            if (up.y < 0) up = -up;
            const auto corner = [&](const glm::dvec3& at, double lean) {
                return mesh.vertex(at, glm::normalize(up + across * lean), {0.5, 0.5});
            };
            const std::uint32_t a = corner(foot - wide * 0.5, 0.1), b = corner(foot + wide * 0.5, 0.1);
            const std::uint32_t c = corner(bend - wide, 0.25), d = corner(bend + wide, 0.25);
            const std::uint32_t e = corner(tip, 0.6);
            if (side > 0) {
                mesh.quad(a, c, d, b);
                mesh.triangle(c, e, d);
            } else {
                mesh.quad(b, d, c, a);
                mesh.triangle(d, e, c);
            }
        }
    }
    Geometry geometry = mesh.take();
    // Older toward the tips: paler and yellower.
    for (Geometry::Vertex& vertex : geometry.vertices) {
        const float age = std::clamp(vertex.position.x / static_cast<float>(length), 0.f, 1.f);
        vertex.colour = {1 + 0.75f * age, 1 + 0.3f * age, 1 - 0.1f * age, 1};
    }
    return geometry;
}

}  // namespace

void palm(Node& into, const glm::dvec3& at, double lean) {
    Node& palm = into.addChild("palm");
    palm.position = props::onSand(at.x, at.z);
    const auto bark = Materials::pbr(RGB{0.45, 0.34, 0.24}, 0, 0.9);
    const auto green = Materials::pbr(RGB{0.18, 0.42, 0.18}, 0, 0.7);
    green->doubleSided = true;
    const auto husk = Materials::pbr(RGB{0.34, 0.22, 0.12}, 0, 0.7);

    // The trunk leans from the foot and straightens toward the light.
    const auto trunk = [&](double t) {
        const double bow = lean * (1.5 * t - 0.5 * t * t);
        return glm::dvec3(trunkHeight * bow * 2.4, -0.25 + (trunkHeight + 0.25) * t, -0.35 * t * t);
    };
    // Each piece is widest at its top, where a frond once sat: the rings of a palm.
    MeshBuilder pieces;
    for (int i = 0; i < trunkPieces; ++i) {
        const double from = static_cast<double>(i) / trunkPieces,
                     to = static_cast<double>(i + 1) / trunkPieces;
        const double radius = 0.15 + 0.07 * (1 - from) + 0.16 * std::exp(-9 * from);
        const double length = glm::distance(trunk(from), trunk(to));
        pieces.append(primitives::cone(radius * 1.07, radius * 0.93, length * 1.04, 18),
                      props::alongSegment(trunk(from), trunk(to)));
    }
    props::part(palm, pieces.take(), bark).name = "trunk";

    Node& crown = palm.addChild("crown");
    crown.position = trunk(1);
    props::part(crown, primitives::sphere(0.2, 20), bark).scale = {1, 1.3, 1};
    const std::array<GeometryRef, 3> shapes{std::make_shared<const Geometry>(frond(0.62, 0.72)),
                                            std::make_shared<const Geometry>(frond(0.36, 0.86)),
                                            std::make_shared<const Geometry>(frond(0.1, 0.92))};
    Xorshift draws(static_cast<std::uint64_t>(std::abs(at.x) * 100) * 2 + 1);
    for (int k = 0; k < fronds; ++k) {
        Node& pivot = crown.addChild("frond");
        pivot.position = {0, 0.12, 0};
        pivot.eulerAngles.y = 2 * pi * k / fronds + 0.35 * (draws.unit() - 0.5);
        Node& leaf = props::part(pivot, shapes[static_cast<std::size_t>(k % 3)], green, {0.08, 0, 0});
        leaf.eulerAngles = {0.5 * (draws.unit() - 0.5), 0, 0.24 * (draws.unit() - 0.5)};
        leaf.scale = glm::dvec3(0.85 + 0.3 * draws.unit());
    }
    for (int k = 0; k < 5; ++k) {
        const double angle = 1.3 * k;
        props::part(crown, primitives::sphere(0.13, 16), husk,
                    {0.2 * std::cos(angle), -0.14 - 0.05 * (k % 2), 0.2 * std::sin(angle)});
    }
}

}  // namespace gull::Dressing
