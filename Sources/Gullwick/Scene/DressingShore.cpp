// Things found on every shore: rope, shells, pebbles, starfish, weed, driftwood, rocks, bucket and spade.
#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Dressing.h"
#include "Gullwick/Scene/Lathe.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/PropParts.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <glm/trigonometric.hpp>
#include <numbers>

namespace gull::Dressing {

namespace {

using props::onSand;
using props::part;

constexpr double pi = std::numbers::pi;
constexpr double quarter = pi / 2;

GeometryRef shared(Geometry geometry) {
    return std::make_shared<const Geometry>(std::move(geometry));
}

/// Puts a node on the sand in the plane of the slope there, turned by `yaw`.
void layOnSlope(Node& node, const glm::dvec3& at, double yaw) {
    const glm::dvec2 slope = Terrain::slope(at.x, at.z);
    const glm::dvec3 up = glm::normalize(glm::dvec3(-slope.x, 1, -slope.y));
    const glm::dvec3 ahead = glm::normalize(glm::cross(glm::dvec3(std::cos(yaw), 0, -std::sin(yaw)), up));
    node.position = at;
    node.orientation = glm::quat_cast(glm::dmat3(glm::cross(up, ahead), up, ahead));
}

/// A scallop of radius 1 with its hinge at -x.
Geometry scallop(int segments) {
    const Geometry ball = mesh::displaced(primitives::sphere(1, segments), [](const glm::dvec3& p) {
        const double fan = std::atan2(p.z, p.x + 1.15);
        const double rib = std::cos(18 * fan);
        const double narrow = 0.5 + 0.5 * std::clamp((p.x + 1.0) / 1.1, 0.0, 1.0);
        return glm::dvec3(p.x * (1 + 0.02 * rib), p.y * (1 + 0.1 * rib), p.z * narrow);
    });
    return mesh::withNormals(ball, 180);
}

/// Five tapering arms and a raised middle.
Geometry star() {
    const Geometry arm = mesh::displaced(primitives::capsule(0.06, 0.42, 16), [](const glm::dvec3& p) {
        const double out = (p.y + 0.21) / 0.42;  // 0 at the middle of the star to 1 at the arm's tip
        const double taper = 1.25 - 0.7 * out;
        return glm::dvec3(p.x * taper, p.y, p.z * taper);
    });
    MeshBuilder mesh;
    for (int k = 0; k < 5; ++k) {
        Node lying, turned;
        Node& inner = turned.addChild();
        turned.eulerAngles.y = glm::radians(72.0 * k);
        inner.eulerAngles.x = quarter;
        inner.position = {0, 0, 0.2};
        inner.scale = {1, 1, 0.5};
        mesh.append(arm, inner.worldTransform());
    }
    Node middle;
    middle.position.y = 0.012;
    middle.scale = {1, 0.42, 1};
    mesh.append(primitives::sphere(0.1, 20), middle.localTransform());
    return mesh.take();
}

/// A strand of kelp of length 1 along x: a flattened, waving ribbon.
Geometry strand() {
    std::vector<glm::dvec3> path;
    std::vector<double> radii;
    constexpr int points = 22;
    for (int i = 0; i <= points; ++i) {
        const double s = static_cast<double>(i) / points;
        path.emplace_back(s - 0.5, 0, 0.07 * std::sin(9 * s) + 0.03 * std::sin(23 * s));
        radii.push_back(0.05 * (0.35 + 0.65 * std::sin(pi * std::min(1.0, 0.12 + 0.88 * s))) *
                        (1 + 0.18 * std::sin(40 * s)));
    }
    return shapes::bar(path, radii, 8);
}

}  // namespace

std::unique_ptr<Node> siteRope() {
    auto rope = std::make_unique<Node>("rope");
    const auto wood = Materials::pbr(RGB{0.55, 0.42, 0.28}, 0, 0.85);
    const auto flag = Materials::pbr(RGB{0.95, 0.35, 0.2}, 0, 0.7);
    flag->doubleSided = true;
    const auto hemp = Materials::pbr(RGB{0.86, 0.74, 0.52}, 0, 0.9);
    hemp->emission = {0.36, 0.24, 0.13, 1};  // thin fibres glow with the light behind them
    constexpr double buried = 0.12;
    constexpr double knot = 0.6;  // height at which the rope is tied
    constexpr double sag = 0.34;

    const auto stake = shared(primitives::cone(0.035, 0.05, 0.75 + buried, 12));
    const auto pennant = shared(primitives::pyramid(0.02, 0.24, 0.16));
    const auto loop = shared(primitives::torus(0.05, 0.018, 16, 8));
    const std::array<glm::dvec2, 4> corners{{{-8.35, 5.35}, {8.35, 5.35}, {8.35, -5.35}, {-8.35, -5.35}}};
    for (const glm::dvec2& corner : corners) {
        Node& post = part(*rope, stake, wood, onSand(corner.x, corner.y, 0.375 - buried / 2));
        post.name = "stake";
        // Leans outward a little against the pull of the rope.
        post.eulerAngles = {0.03 * (corner.y > 0 ? 1 : -1), 0, 0.03 * (corner.x > 0 ? -1 : 1)};
        part(*rope, pennant, flag, onSand(corner.x + 0.03, corner.y, 0.66), {0, 0, -quarter}).name =
            "pennant";
        part(*rope, loop, hemp, onSand(corner.x, corner.y, knot));
    }
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const glm::dvec2 from = corners[i], to = corners[(i + 1) % corners.size()];
        std::vector<glm::dvec3> path;
        constexpr int pieces = 36;
        for (int k = 0; k <= pieces; ++k) {
            const double t = static_cast<double>(k) / pieces;
            const glm::dvec2 at = from + (to - from) * t;
            path.push_back(onSand(at.x, at.y, knot - sag * 4 * t * (1 - t)));
        }
        part(*rope, shapes::bar(path, {0.018}, 7), hemp).name = "line";
    }
    return rope;
}

void scatter(Node& into, const BeachLook&, SplitMix64& rng, int shells) {
    constexpr std::array<RGB, 4> palette{
        {{0.98, 0.88, 0.84}, {0.96, 0.78, 0.66}, {0.9, 0.86, 0.8}, {0.98, 0.7, 0.62}}};
    std::array<std::shared_ptr<Material>, 4> colours;
    for (std::size_t i = 0; i < palette.size(); ++i) colours[i] = Materials::pbr(palette[i], 0, 0.45);
    const GeometryRef shell = shared(scallop(28)), coarseShell = shared(scallop(10));
    for (int i = 0; i < shells; ++i) {
        const double x = uniform(rng, -18, 18);
        const double z = uniform(rng, -6.5, 9);
        const double radius = uniform(rng, 0.06, 0.11);
        const double yaw = uniform(rng, 0, 6);
        Node& node = part(into, shell, colours[static_cast<std::size_t>(i % 4)]);
        node.coarseGeometry = coarseShell;
        node.name = "shell";
        layOnSlope(node, onSand(x, z, 0.01), yaw);
        node.scale = glm::dvec3(1, 0.35, 0.8) * radius;
    }
    const auto grey = Materials::pbr(RGB{0.6, 0.57, 0.53}, 0, 0.75);
    const auto rounded = [](int segments) {
        return shared(mesh::withNormals(props::boulder(segments, 2.3, 0.12), 180));
    };
    const GeometryRef pebble = rounded(5), coarsePebble = rounded(2);
    for (int i = 0; i < 14; ++i) {
        const double x = uniform(rng, -20, 20);
        const double z = uniform(rng, -6, 10);
        const double radius = uniform(rng, 0.06, 0.16);
        Node& node = part(into, pebble, grey, onSand(x, z, radius / 5), {0, 2.4 * i, 0});
        node.coarseGeometry = coarsePebble;
        node.name = "pebble";
        node.scale = glm::dvec3(1.2, 0.55, 0.9) * radius;
    }
}

void bucket(Node& into, const BeachLook& look, double towardViewer) {
    Node& pail = into.addChild("bucket");
    pail.position = onSand(9.7, -3 + towardViewer, -0.02);
    auto red = Materials::pbr(RGB{0.9, 0.22, 0.16}, 0, 0.35);
    red->doubleSided = true;
    // Outside up, over a rolled rim, and down the inside to the sand that fills it.
    part(pail,
         shapes::lathe({{0, 0, true},
                        {0.262, 0},
                        {0.27, 0.01},
                        {0.354, 0.51, true},
                        {0.372, 0.515},
                        {0.376, 0.535},
                        {0.37, 0.55},
                        {0.345, 0.55},
                        {0.338, 0.53, true},
                        {0.318, 0.4, true}},
                       48, false, 1),
         red);
    const auto fill = Materials::pbr(look.sand.scaled(0.85), 0, 0.95);
    part(pail,
         shapes::lathe({{0.322, 0.38}, {0.3, 0.42}, {0.2, 0.46}, {0.08, 0.485}, {0, 0.49}}, 32, false, 1),
         fill);

    // The handle lies over to one side, from lug to lug.
    const auto yellow = Materials::pbr(RGB{0.95, 0.85, 0.2}, 0, 0.4);
    std::vector<glm::dvec3> hoop;
    for (int i = 0; i <= 24; ++i) {
        const double angle = pi * i / 24;
        hoop.emplace_back(0.37 * std::cos(angle), 0.37 * std::sin(angle), 0);
    }
    Node& handle = pail.addChild("handle");
    handle.position = {0, 0.5, 0};
    handle.eulerAngles = {1.25, 0, 0};
    Node& turned = pail.addChild();
    turned.eulerAngles.y = 0.4;
    turned.add(handle.removeFromParent());
    part(handle, shapes::bar(hoop, {0.015}, 10), yellow);
    for (const double side : {-1.0, 1.0}) {
        part(handle, primitives::sphere(0.035, 16), yellow, {0.37 * side, 0, 0});
    }

    // The spade lies flat, its blade turned half into the sand.
    const auto blue = Materials::pbr(RGB{0.16, 0.45, 0.9}, 0, 0.4);
    Node& spade = into.addChild("spade");
    layOnSlope(spade, onSand(10.4, -2.85 + towardViewer, 0.02), 0.5);
    Node& blade = part(spade, primitives::box(0.3, 0.03, 0.36, 0.05), blue, {0, 0.015, 0}, {0.12, 0, 0});
    blade.name = "blade";
    part(spade,
         shapes::bar({{0, 0.03, 0.1}, {0, 0.05, 0.2}, {0, 0.05, 0.5}, {0, 0.045, 0.86}},
                     {0.036, 0.03, 0.028, 0.03}, 12),
         blue);
    part(spade, primitives::capsule(0.03, 0.22, 12), blue, {0, 0.045, 0.87}, {0, 0, quarter});
}

void rocks(Node& into, const std::vector<Rock>& at, const BeachLook& look, Textures& textures) {
    auto stone = Materials::pbr(RGB{0.55, 0.51, 0.47}.mixed(look.sand, 0.15), 0, 0.85);
    stone->normalMap.texture = textures.grainNormal(256, 5, 2, 3);
    stone->normalMap.wrapS = stone->normalMap.wrapT = Wrap::repeat;
    stone->normalMap.scale = {3, 2};
    const auto shape = [](int segments, int kind) {
        return shared(props::boulder(segments, kind == 0 ? 0.8 : 4.1, kind == 0 ? 0.2 : 0.22));
    };
    const std::array<GeometryRef, 2> shapes{shape(9, 0), shape(9, 1)}, coarse{shape(4, 0), shape(4, 1)};
    for (std::size_t i = 0; i < at.size(); ++i) {
        const Rock& rock = at[i];
        Node& place = into.addChild("rock");
        place.position = onSand(rock.x, rock.z);
        place.eulerAngles = {0, 1.9 * static_cast<double>(i), 0.2};
        Node& boulder = part(place, shapes[i % shapes.size()], stone);
        boulder.coarseGeometry = coarse[i % coarse.size()];
        boulder.scale = glm::dvec3(1, 0.75, 1) * rock.size;
    }
}

void starfish(Node& into, SplitMix64& rng) {
    constexpr std::array<RGB, 3> palette{{{0.95, 0.45, 0.22}, {0.9, 0.32, 0.36}, {0.98, 0.62, 0.3}}};
    const GeometryRef shape = shared(star());
    for (int i = 0; i < 7; ++i) {
        const double x = uniform(rng, -16, 16);
        const double z = i < 4 ? uniform(rng, -6.4, -5.6) : uniform(rng, 5.8, 8.5);
        const double yaw = uniform(rng, 0, 6);
        Node& node = part(into, shape, Materials::pbr(palette[static_cast<std::size_t>(i % 3)], 0, 0.6));
        node.name = "starfish";
        layOnSlope(node, onSand(x, z, 0.03), yaw);
    }
}

void seaweed(Node& into, SplitMix64& rng) {
    const auto green = Materials::pbr(RGB{0.16, 0.22, 0.1}, 0, 0.5);
    const GeometryRef shape = shared(strand());
    for (int i = 0; i < 26; ++i) {
        const double x = uniform(rng, -18, 18);
        const double z = uniform(rng, -6.4, 9);
        const double length = uniform(rng, 0.6, 1.5);
        const double yaw = uniform(rng, 0, 6);
        Node& node = into.addChild("seaweed");
        layOnSlope(node, onSand(x, z, 0.02), yaw);
        Node& main = part(node, shape, green);
        main.scale = {length, 0.5, 1};
        // A shorter frond grows from the same root.
        Node& second = part(node, shape, green, {-0.3 * length, 0.01, 0.05}, {0, 0.5, 0});
        second.scale = {0.55 * length, 0.4, 0.8};
    }
}

void driftwood(Node& into, const glm::dvec3& at, double yaw, double length) {
    const auto wood = Materials::pbr(RGB{0.66, 0.6, 0.53}, 0, 0.9);
    Node& log = into.addChild("driftwood");
    layOnSlope(log, onSand(at.x, at.z, 0.1), yaw);
    std::vector<glm::dvec3> path;
    std::vector<double> radii;
    constexpr int points = 26;
    for (int i = 0; i <= points; ++i) {
        const double s = static_cast<double>(i) / points;
        const double ends = std::min({1.0, 0.25 + 6 * s, 0.2 + 7 * (1 - s)});
        path.emplace_back((s - 0.5) * length, 0.05 * std::sin(4.4 * s), 0.1 * std::sin(2.8 * s + 0.4));
        radii.push_back(0.2 * ends * (1.02 - 0.28 * s + 0.06 * std::sin(17 * s) + 0.04 * std::sin(41 * s)));
    }
    // Weathered: furrows along the grain, which split open toward the ends.
    const auto furrowed = [](const std::vector<glm::dvec3>& line, const std::vector<double>& thickness,
                             int sides, int furrows) {
        const Geometry smooth = shapes::bar(line, thickness, sides);
        const Geometry rough = mesh::displaced(smooth, [furrows](const glm::dvec3& p) {
            const double grain = 1 + 0.06 * std::sin(furrows * std::atan2(p.y, p.z) + 2 * p.x);
            return glm::dvec3(p.x, p.y * grain, p.z * grain);
        });
        return mesh::withNormals(rough, 40);
    };
    part(log, furrowed(path, radii, 16, 14), wood);
    // A branch that wound its way up and was broken off, with a twig at its elbow; a stump on the other side.
    const double root = 0.18 * length;
    const auto on = [root](double along, double up, double out) { return glm::dvec3(root + along, up, out); };
    MeshBuilder branches;
    branches.append(
        shapes::bar({on(-0.04, 0.02, 0.02), on(0.07, 0.15, 0.13), on(0.13, 0.26, 0.27), on(0.24, 0.3, 0.36),
                     on(0.33, 0.4, 0.4), on(0.4, 0.44, 0.52), on(0.52, 0.45, 0.57), on(0.57, 0.52, 0.63)},
                    {0.1, 0.075, 0.068, 0.06, 0.052, 0.045, 0.04, 0.028}, 9));
    branches.append(shapes::bar({on(0.22, 0.3, 0.35), on(0.24, 0.4, 0.33), on(0.2, 0.48, 0.36),
                                 on(0.22, 0.56, 0.34), on(0.19, 0.62, 0.35)},
                                {0.045, 0.032, 0.028, 0.02, 0.01}, 7));
    branches.append(
        shapes::bar({on(0.4, 0.43, 0.5), on(0.5, 0.36, 0.52), on(0.56, 0.37, 0.5), on(0.66, 0.32, 0.53)},
                    {0.03, 0.024, 0.018, 0.008}, 6));
    branches.append(
        shapes::bar({{-root, 0.06, -0.05}, {-root - 0.08, 0.2, -0.12}, {-root - 0.09, 0.27, -0.14}},
                    {0.075, 0.055, 0.05}, 9));
    part(log, branches.take(), wood);
}

}  // namespace gull::Dressing
