// Things that people built or left behind: pier, rowboat, lighthouse, wreck.
#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Dressing.h"
#include "Gullwick/Scene/Lathe.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/PropParts.h"
#include "Gullwick/Scene/Terrain.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>

namespace gull::Dressing {

namespace {

using props::part;
using props::timber;

constexpr double pi = std::numbers::pi;
constexpr double quarter = pi / 2;

/// A pile of radius 0.16 from `top` down into the sea floor, at least 4.2 long.
void pile(MeshBuilder& mesh, double x, double z, double top) {
    const double foot = std::min(Terrain::height(x, z) - 0.4, top - 4.2);
    mesh.append(primitives::cone(0.15, 0.17, top - foot, 14), props::alongSegment({x, foot, z}, {x, top, z}));
}

// The rowboat's lines, as functions of the place along it, -1 to 1.
double halfBeam(double s) {
    return std::max(0.012, 0.8 * std::pow(std::max(0.0, 1 - std::pow(std::abs(s), 2.6)), 0.75));
}
double keelHeight(double s) {
    return -0.32 + 0.42 * std::pow(std::abs(s), 3.2);
}
double sheerHeight(double s) {
    return 0.55 + 0.17 * std::pow(std::abs(s), 2.4);
}
constexpr double boatHalfLength = 2.1;

/// One skin of the hull, `inset` inside the outermost; faces outward, or inward when `inward`.
void hullSkin(MeshBuilder& mesh, double inset, bool inward) {
    constexpr int stations = 32, strakes = 7;
    const auto point = [&](int i, int j) {
        const double s = 2.0 * i / stations - 1;
        // From the starboard gunwale under the keel to the port one.
        const double angle = (static_cast<double>(j) / strakes - 1) * quarter;
        const double beam = std::max(0.006, halfBeam(s) - inset);
        const double keel = std::min(keelHeight(s) + inset, sheerHeight(s) - 0.02);
        return glm::dvec3(boatHalfLength * s * (1 - 0.25 * inset),
                          keel + (sheerHeight(s) - keel) * (1 - std::cos(angle)), beam * std::sin(angle));
    };
    const auto face = [&](const glm::dvec3& a, const glm::dvec3& b, const glm::dvec3& c) {
        if (glm::length(glm::cross(b - a, c - a)) < 1e-9) return;
        inward ? mesh.flatTriangle(a, c, b) : mesh.flatTriangle(a, b, c);
    };
    for (int i = 0; i < stations; ++i) {
        for (int j = 0; j < 2 * strakes; ++j) {
            const glm::dvec3 a = point(i, j), b = point(i + 1, j), c = point(i + 1, j + 1),
                             d = point(i, j + 1);
            face(a, b, c);
            face(a, c, d);
        }
    }
}

/// The top of the planking: a strip from the outer skin to the inner one, along both sides.
void gunwale(MeshBuilder& mesh, double side) {
    std::vector<glm::dvec3> path;
    for (int i = 0; i <= 36; ++i) {
        const double s = 2.0 * i / 36 - 1;
        path.emplace_back(boatHalfLength * s, sheerHeight(s), side * std::max(0.0, halfBeam(s) - 0.02));
    }
    mesh.append(shapes::bar(path, {0.05}, 8));
}

}  // namespace

void pier(Node& into, Textures& textures) {
    Node& pier = into.addChild("pier");
    auto wood = Materials::pbr(RGB{0.36, 0.28, 0.2}, 0, 0.85);
    wood->diffuseMap.texture = textures.planks();
    wood->diffuseMap.wrapS = wood->diffuseMap.wrapT = Wrap::repeat;
    wood->diffuseMap.intensity = 0.45;
    auto decking = std::make_shared<Material>(*wood);
    decking->diffuse = {0.62, 0.52, 0.41, 1};

    constexpr double deckX = 10.9, deckY = 2.74, deckFar = -38.6, deckNear = -0.6;
    constexpr double under = deckY - 0.1;
    constexpr std::array<double, 3> rowsOfPiles{9.62, 10.9, 12.18};

    MeshBuilder frame;
    for (double z = deckNear - 0.35; z > deckFar; z -= 3.1) {
        for (const double x : rowsOfPiles) pile(frame, x, z, under);
        Node beam;
        beam.position = {deckX, under - 0.1, z};
        frame.append(primitives::box(3, 0.16, 0.25, 0.02), beam.localTransform());
        // Crossed braces between the outer piles, clear of the water.
        const double low = std::max(Terrain::height(deckX, z), -0.2) + 0.55;
        frame.append(
            timber({rowsOfPiles[0], low, z + 0.14}, {rowsOfPiles[2], under - 0.3, z + 0.14}, 0.14, 0.06));
        frame.append(
            timber({rowsOfPiles[2], low, z - 0.14}, {rowsOfPiles[0], under - 0.3, z - 0.14}, 0.14, 0.06));
    }
    for (const double x : rowsOfPiles) {
        frame.append(timber({x, under - 0.06, deckNear}, {x, under - 0.06, deckFar}, 0.2, 0.16));
    }

    // The rail runs on the plot's side and stops where the stairs come down.
    frame.append(timber({9.5, 3.8, deckFar}, {9.5, 3.8, deckNear}, 0.1, 0.1));
    frame.append(timber({9.5, 3.35, deckFar}, {9.5, 3.35, deckNear}, 0.05, 0.08));
    for (double z = deckNear - 0.06; z >= deckFar; z -= 1.9) {
        frame.append(primitives::cylinder(0.05, 1.1, 10),
                     props::alongSegment({9.5, deckY - 0.05, z}, {9.5, 3.78, z}));
    }

    // Boards across the deck, laid by hand: no two quite alike.
    MeshBuilder boards;
    Xorshift draws(311);
    constexpr double board = 0.27;
    for (double z = deckNear - board / 2; z > deckFar; z -= board) {
        Node place;
        place.position = {deckX + 0.05 * (draws.unit() - 0.5), deckY + 0.012 * (draws.unit() - 0.5), z};
        place.eulerAngles = {0, 0.012 * (draws.unit() - 0.5), 0};
        boards.append(primitives::box(3, 0.07, board - 0.03, 0.012), place.localTransform());
    }

    // Stairs from the landward end down to the sand.
    constexpr int steps = 11;
    constexpr double run = 0.27;
    const double landing = Terrain::height(deckX, deckNear + steps * run) - 0.05;
    const double rise = (deckY - landing) / steps;
    for (int i = 1; i < steps; ++i) {
        Node tread;
        tread.position = {deckX, deckY - rise * i, deckNear + run * (i - 0.5)};
        boards.append(primitives::box(1.9, 0.06, run + 0.03, 0.012), tread.localTransform());
    }
    for (const double x : {deckX - 0.98, deckX + 0.98}) {
        frame.append(timber({x, deckY - 0.12, deckNear - 0.1},
                            {x, landing - 0.15, deckNear + run * steps + 0.1}, 0.07, 0.26));
        frame.append(timber({x, deckY + 0.95, deckNear - 0.05}, {x, landing + 1.0, deckNear + run * steps},
                            0.07, 0.09));
        for (const double t : {0.0, 0.5, 1.0}) {
            const double y = deckY + (landing - deckY) * t, z = deckNear + (run * steps - 0.1) * t;
            frame.append(primitives::cylinder(0.045, 1.3, 10),
                         props::alongSegment({x, y - 0.35, z}, {x, y + 0.95, z}));
        }
    }
    part(pier, props::weathered(frame.take(), 1.9, 2.4), wood).name = "frame";
    part(pier, boards.take(), decking).name = "deck";
}

void rowboat(Node& into, const glm::dvec3& at, double yaw) {
    Node& boat = into.addChild("rowboat");
    boat.position = {at.x, Terrain::height(at.x, at.z) + 0.06, at.z};
    boat.eulerAngles = {0, yaw, 0.12};
    const auto paint = Materials::pbr(RGB{0.2, 0.42, 0.55}, 0, 0.6);
    const auto wood = Materials::pbr(RGB{0.55, 0.42, 0.3}, 0, 0.8);

    // Planks are visible: the skin has an edge between strakes but is smooth along them.
    MeshBuilder outside, inside, trim;
    hullSkin(outside, 0, false);
    hullSkin(inside, 0.05, true);
    part(boat, mesh::withNormals(outside.take(), 9), paint);
    part(boat, mesh::withNormals(inside.take(), 9), wood);

    gunwale(trim, 1);
    gunwale(trim, -1);
    const auto place = [](const glm::dvec3& position) {
        Node node;
        node.position = position;
        return node.localTransform();
    };
    for (const double x : {-0.7, 0.6})
        trim.append(primitives::box(0.3, 0.06, 1.4, 0.015), place({x, 0.44, 0}));
    // Floor boards, ribs, stem and stern posts.
    for (const double z : {-0.36, -0.12, 0.12, 0.36}) {
        const double half = z * z > 0.1 ? 1.15 : 1.45;
        trim.append(primitives::box(2 * half, 0.04, 0.21, 0.01), place({0, 0.12, z}));
    }
    for (double s = -0.72; s < 0.8; s += 0.24) {
        std::vector<glm::dvec3> rib;
        for (int j = 0; j <= 16; ++j) {
            const double angle = (j / 8.0 - 1) * quarter;
            rib.emplace_back(
                boatHalfLength * s,
                keelHeight(s) + 0.05 + (sheerHeight(s) - keelHeight(s) - 0.06) * (1 - std::cos(angle)),
                (halfBeam(s) - 0.055) * std::sin(angle));
        }
        trim.append(shapes::bar(rib, {0.028}, 6));
    }
    for (const double end : {-1.0, 1.0}) {
        trim.append(shapes::bar({{boatHalfLength * 0.86 * end, keelHeight(0.86) - 0.02, 0},
                                 {boatHalfLength * 0.97 * end, keelHeight(0.97) + 0.05, 0},
                                 {boatHalfLength * 1.01 * end, sheerHeight(1) + 0.06, 0}},
                                {0.04, 0.045, 0.05}, 8));
    }
    // An oar across the gunwales.
    MeshBuilder oar;
    oar.append(primitives::cylinder(0.035, 2.6, 12),
               props::alongSegment({-1.1, 0.6, 0.3}, {1.5, 0.62, 0.62}));
    Node blade;
    blade.position = {1.62, 0.62, 0.635};
    blade.eulerAngles = {0, -0.12, 0};
    oar.append(primitives::box(0.62, 0.03, 0.19, 0.012), blade.localTransform());
    trim.append(oar.take());
    part(boat, trim.take(), wood);
}

void lighthouse(Node& into, Textures& textures) {
    Node& place = into.addChild("lighthouse");
    place.position = {11.4, 0, -9.5};
    place.scale = glm::dvec3(0.34);

    auto rock = Materials::pbr(RGB{0.5, 0.47, 0.45}, 0, 0.85);
    rock->normalMap.texture = textures.grainNormal(256, 9, 2, 3);
    rock->normalMap.wrapS = rock->normalMap.wrapT = Wrap::repeat;
    rock->normalMap.scale = {4, 3};
    Node& islet = part(place, props::boulder(12, 1.4, 0.16), rock, {0, -0.6, 0});
    islet.scale = glm::dvec3(1.1, 0.5, 0.9) * 7.0;

    const auto white = Materials::pbr(RGB{0.95, 0.94, 0.9}, 0, 0.5);
    const auto red = Materials::pbr(RGB{0.75, 0.12, 0.1}, 0, 0.5);
    const auto dark = Materials::pbr(RGB{0.12, 0.12, 0.13}, 0.3, 0.5);
    for (int i = 0; i < 5; ++i) {
        const double bottom = 1.25 - 0.1 * i;
        part(place, primitives::cone(bottom - 0.1, bottom, 2.2, 40), i % 2 == 0 ? white : red,
             {0, 2.6 + 2.2 * i, 0});
    }
    // Door and windows, on the side that the beach sees.
    Node& front = place.addChild();
    front.eulerAngles.y = std::atan2(-11.4, 18);
    part(front, primitives::box(0.5, 1.1, 0.12, 0.04), dark, {0, 3.6, 1.16});
    for (const double y : {6.0, 8.4, 10.8})
        part(front, primitives::box(0.26, 0.5, 0.1, 0.03), dark, {0, y, 1.34 - 0.0455 * y});

    // Gallery, lantern room and roof.
    part(place, primitives::cylinder(1.1, 0.16, 40), dark, {0, 12.55, 0});
    part(place, primitives::cylinder(0.78, 0.7, 40), white, {0, 12.9, 0});
    for (const double y : {12.9, 13.2}) part(place, primitives::torus(1.04, 0.03, 40, 8), dark, {0, y, 0});
    const auto post = std::make_shared<const Geometry>(primitives::cylinder(0.03, 0.6, 8));
    for (int k = 0; k < 12; ++k) {
        const double angle = 2 * pi * k / 12;
        part(place, post, dark, {1.04 * std::cos(angle), 12.9, 1.04 * std::sin(angle)});
    }
    auto lamp = Materials::pbr(RGB{1, 0.92, 0.6}, 0, 0.2);
    lamp->emission = {1, 0.85, 0.45, 1};
    part(place, primitives::cylinder(0.75, 1, 40), lamp, {0, 13.7, 0});
    const auto bar = std::make_shared<const Geometry>(primitives::box(0.05, 1, 0.05));
    for (int k = 0; k < 8; ++k) {
        const double angle = 2 * pi * k / 8;
        part(place, bar, dark, {0.76 * std::cos(angle), 13.7, 0.76 * std::sin(angle)}, {0, -angle, 0});
    }
    part(place, primitives::cone(0.05, 0.95, 0.9, 40), red, {0, 14.65, 0});
    part(place, primitives::sphere(0.12, 16), dark, {0, 15.15, 0});
}

void wreck(Node& into) {
    Node& wreck = into.addChild("wreck");
    const auto wood = Materials::pbr(RGB{0.22, 0.17, 0.13}, 0, 0.9);
    Node& hull = wreck.addChild("hull");
    hull.position = {-4.5, 0, -9};
    hull.eulerAngles = {0, 0.25, 0};
    part(hull, primitives::box(11, 0.4, 0.4, 0.04), wood, {0, -0.35, 0}).name = "keel";

    // Frames stand across the keel, open at the top where decks and beams are gone.
    constexpr int frames = 13;
    const auto ringRadius = [](double x) { return 1.9 * (1 - 0.62 * std::pow(std::abs(x) / 5.6, 2.3)); };
    const auto onSkin = [&](double x, double side, double angle) {
        const double radius = ringRadius(x);
        return glm::dvec3(x, -0.5 + radius * std::sin(angle), side * 0.8 * radius * std::cos(angle));
    };
    const auto frameX = [](int i) { return -4.8 + 0.8 * i; };
    // How far up each half frame still reaches, radians; the seaward side is better preserved.
    constexpr std::array<double, frames> near{0.8,  1.1, 1.22, 1.0, 0.5, 1.25, 1.3,
                                              1.18, 0.9, 0.4,  1.1, 1.2, 0.95};
    constexpr std::array<double, frames> far{1.1, 1.22, 1.3,  1.28, 1.2, 1.33, 1.05,
                                             1.3, 1.25, 1.15, 1.28, 1.2, 1.1};
    MeshBuilder mesh;
    for (int i = 0; i < frames; ++i) {
        for (const double side : {1.0, -1.0}) {
            const double reach = (side > 0 ? near : far)[static_cast<std::size_t>(i)];
            std::vector<glm::dvec3> path;
            std::vector<double> radii;
            constexpr int points = 14;
            for (int k = 0; k <= points; ++k) {
                const double t = static_cast<double>(k) / points;
                path.push_back(onSkin(frameX(i), side, -0.55 + (reach + 0.55) * t));
                radii.push_back(0.135 - 0.05 * t - (k == points ? 0.03 : 0));
            }
            mesh.append(shapes::bar(path, radii, 8));
        }
    }
    // The remains of the planking, outside the frames.
    struct Strake {
        double side, angle;
        int first, last;
    };
    constexpr std::array<Strake, 12> strakes{{{1, -0.02, 0, 12},
                                              {1, 0.13, 1, 7},
                                              {1, 0.28, 2, 6},
                                              {1, 0.13, 9, 12},
                                              {1, 0.43, 3, 5},
                                              {1, 0.28, 10, 12},
                                              {-1, -0.02, 0, 12},
                                              {-1, 0.13, 0, 11},
                                              {-1, 0.28, 0, 8},
                                              {-1, 0.43, 1, 7},
                                              {-1, 0.58, 3, 6},
                                              {-1, 0.28, 10, 12}}};
    for (const Strake& strake : strakes) {
        for (int i = strake.first; i < strake.last; ++i) {
            const auto outside = [&](int frame) {
                const glm::dvec3 middle(frameX(frame), -0.5, 0);
                const glm::dvec3 at = onSkin(frameX(frame), strake.side, strake.angle);
                return at + glm::normalize(at - middle) * 0.12;
            };
            const glm::dvec3 from = outside(i), to = outside(i + 1);
            const glm::dvec3 overlap = glm::normalize(to - from) * 0.06;
            mesh.append(timber(from - overlap, to + overlap, 0.05, 0.22));
        }
    }
    // Stem and stern posts, and a fallen beam.
    mesh.append(shapes::bar({{5.2, -0.6, 0}, {5.7, 0.1, 0}, {6.05, 0.9, 0}, {6.2, 1.75, 0}},
                            {0.2, 0.18, 0.16, 0.12}, 8));
    mesh.append(shapes::bar({{-5.2, -0.7, 0}, {-5.45, 0.3, 0}, {-5.6, 1.35, 0}}, {0.2, 0.17, 0.13}, 8));
    mesh.append(timber({1.2, -0.3, 1.1}, {2.1, 1.15, -1.0}, 0.2, 0.2));
    part(hull, props::weathered(mesh::withNormals(mesh.take(), 40), 2.2, 3.8), wood).name = "frames";

    part(wreck, props::weathered(primitives::cone(0.13, 0.18, 3.6, 14), 2.2, 3.8), wood, {-1.1, 0.2, -9},
         {0.5, 0, 1.15})
        .name = "mast";
}

}  // namespace gull::Dressing
