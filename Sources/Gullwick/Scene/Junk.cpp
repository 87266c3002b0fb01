#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/ItemParts.h"
#include "Gullwick/Scene/Lathe.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/geometric.hpp>

namespace gull::itemParts {

namespace {

constexpr double turnAround = 2 * std::numbers::pi;

/// A surface over turns about the y axis and rows, which run upward, or downward when `downward`; rows that
/// run the other way show its inner side. Without normals.
template <typename Place>
Geometry wrapped(int around, int rows, const Place& place, bool downward = false) {
    MeshBuilder mesh;
    std::vector<std::uint32_t> grid;
    for (int row = 0; row <= rows; ++row)
        for (int k = 0; k <= around; ++k) {
            const double turn = k == around ? 0 : turnAround * k / around;
            grid.push_back(mesh.vertex(place(turn, static_cast<double>(row) / rows), {0, 1, 0},
                                       {static_cast<double>(k) / around, static_cast<double>(row) / rows}));
        }
    for (std::size_t row = 0; row < static_cast<std::size_t>(rows); ++row)
        for (std::size_t k = 0; k < static_cast<std::size_t>(around); ++k) {
            const std::size_t a = row * (static_cast<std::size_t>(around) + 1) + k;
            const std::size_t b = a + static_cast<std::size_t>(around) + 1;
            downward ? mesh.quad(grid[a], grid[a + 1], grid[b + 1], grid[b])
                     : mesh.quad(grid[a], grid[b], grid[b + 1], grid[a + 1]);
        }
    return mesh.take();
}

/// The metal of a crown cap, axis along y, open below. Elements: side, top, bottom.
Geometry crownCap(int perFlute) {
    constexpr int flutes = 21;
    constexpr double rise = 0.03, shoulder = 0.148, flare = 0.022;
    const int around = flutes * perFlute;
    // From the shoulder the skirt runs down and out into its crimp; `inside` by the metal's thickness.
    const auto skirt = [&](double inset) {
        return [=](double turn, double down) {
            const double crimp = down * down * (0.5 + 0.5 * std::cos(flutes * turn));
            const double r = shoulder + flare * (0.3 * down + 0.7 * crimp) - inset;
            return glm::dvec3(r * std::cos(turn), rise * (1 - 2 * down) - (down == 0 ? 0.008 + inset : 0),
                              r * std::sin(turn));
        };
    };
    MeshBuilder mesh;
    mesh.append(mesh::withNormals(wrapped(around, 2, skirt(0), true), 75));
    mesh.endElement();

    // The top: paint runs over its edge, and there is a star.
    const glm::dvec3 red(0.72, 0.02, 0.02), up(0, 1, 0);
    const auto at = [](double r, double turn, double y) {
        return glm::dvec3(r * std::cos(turn), y, r * std::sin(turn));
    };
    const int edge = 40;
    for (int k = 0; k < edge; ++k) {
        const double from = turnAround * k / edge, to = turnAround * (k + 1) / edge;
        mesh.setColour(red);
        const auto corner = [&](double r, double turn, double y, double lean) {
            return mesh.vertex(at(r, turn, y), glm::normalize(at(lean, turn, 1)));
        };
        mesh.quad(corner(shoulder, to, rise - 0.008, 1), corner(shoulder, from, rise - 0.008, 1),
                  corner(0.132, from, rise, 0.3), corner(0.132, to, rise, 0.3));
        mesh.quad(corner(0.132, to, rise, 0.3), corner(0.132, from, rise, 0.3), corner(0.112, from, rise, 0),
                  corner(0.112, to, rise, 0));
        mesh.setColour(glm::dvec3(1));
        mesh.triangle(mesh.vertex({0, rise, 0}, up), corner(0.112, to, rise, 0),
                      corner(0.112, from, rise, 0));
    }
    mesh.setColour(red);
    constexpr int points = 10;
    for (int k = 0; k < points; ++k) {
        const auto tip = [&](int i) {
            return at(i % 2 == 0 ? 0.085 : 0.036, turnAround * (i + 0.5) / points - 0.1 * quarter,
                      rise + 0.002);
        };
        const std::uint32_t middle = mesh.vertex({0, rise + 0.002, 0}, up);
        mesh.triangle(middle, mesh.vertex(tip(k + 1), up), mesh.vertex(tip(k), up));
    }
    mesh.endElement();

    mesh.setColour(glm::dvec3(0.55));
    mesh.append(mesh::withNormals(wrapped(around, 1, skirt(0.01)), 75));
    // The liner lies deep inside: a disc of grey-green plastic with a raised ring.
    const auto liner = [&](double from, double fromY, double to, double toY, double light) {
        mesh.setColour(glm::dvec3(light, light, 0.9 * light));
        mesh.append(shapes::lathe({{to, toY}, {from, fromY}}, 28, false, 1));
    };
    liner(0.145, 0.012, 0.118, 0.012, 0.4);
    liner(0.118, 0.012, 0.112, 0.004, 0.7);
    liner(0.112, 0.004, 0.098, 0.004, 0.85);
    liner(0.098, 0.004, 0.09, 0.012, 0.3);
    liner(0.09, 0.012, 0, 0.012, 0.5);
    return mesh.take();
}

constexpr double canRadius = 0.17, canHeight = 0.56;

/// Where a point of the can's wall went when it was trodden on: `turn` about y, `up` from 0 to 1.
glm::dvec3 canWall(double turn, double up) {
    const auto near = [](double a, double b, double reach) {
        const double d = std::remainder(a - b, turnAround) / reach;
        return std::exp(-d * d);
    };
    const double ends = std::min(up, 1 - up);
    const double neck = ends < 0.07 ? 0.022 * (1 - ends / 0.07) : 0;
    // Between the two words the heel went in; the sheet buckled to both sides of it.
    const double heel = near(turn, -0.15, 0.62) * std::exp(-std::pow((up - 0.54) / 0.17, 2));
    const double buckle = near(turn, 2.75, 0.5) * std::exp(-std::pow((up - 0.4) / 0.1, 2));
    const double crease = 0.006 * std::sin(26 * up + 3 * turn) * std::exp(-std::pow((up - 0.5) / 0.3, 2)) *
                          (near(turn, -0.15, 1.0) + near(turn, 2.75, 0.8));
    const double r = canRadius - neck - 0.075 * heel - 0.04 * buckle + crease;
    return {r * std::cos(turn), canHeight * (up - 0.5) + 0.012 * heel * std::sin(9 * turn),
            r * std::sin(turn)};
}

/// Elements: side, top, bottom.
Geometry crushedCan(int around, int rows) {
    MeshBuilder mesh;
    // One of the label's two words looks to whoever sees the can stand, the other up when it lies.
    Geometry wall = wrapped(around, rows, canWall);
    for (Geometry::Vertex& vertex : wall.vertices) vertex.uv0.x = 0.49F - vertex.uv0.x;
    mesh.append(mesh::withNormals(std::move(wall), 38));
    mesh.endElement();
    const double y = canHeight / 2, rim = canRadius - 0.022;
    // A rim, and the lid below it with its hole and tab; the bottom is domed inward.
    mesh.append(shapes::lathe({{rim, y, true},
                               {rim - 0.004, y + 0.012, true},
                               {rim - 0.014, y + 0.01, true},
                               {rim - 0.018, y - 0.012, true},
                               {0, y - 0.012}},
                              28, false, 1));
    const auto flat = [&](const std::vector<glm::dvec2>& corners, double height, double light) {
        mesh.setColour(glm::dvec3(light));
        const std::uint32_t first = mesh.vertex({corners[0].x, height, corners[0].y}, {0, 1, 0});
        for (std::size_t i = 1; i < corners.size(); ++i)
            mesh.vertex({corners[i].x, height, corners[i].y}, {0, 1, 0});
        for (std::uint32_t i = 1; i + 1 < corners.size(); ++i) mesh.triangle(first, first + i + 1, first + i);
    };
    const auto oval = [](double x, double halfX, double halfZ) {
        std::vector<glm::dvec2> corners(12);
        for (std::size_t k = 0; k < corners.size(); ++k) {
            const double angle = turnAround * static_cast<double>(k) / static_cast<double>(corners.size());
            corners[k] = {x + halfX * std::cos(angle), halfZ * std::sin(angle)};
        }
        return corners;
    };
    flat(oval(0.062, 0.05, 0.042), y - 0.01, 0.02);
    flat(oval(-0.03, 0.06, 0.034), y - 0.004, 1.1);
    flat(oval(-0.055, 0.02, 0.016), y - 0.002, 0.15);
    mesh.endElement();
    mesh.setColour(glm::dvec3(0.9));
    mesh.append(shapes::lathe(
        {{0, 0.03 - y}, {0.07, 0.022 - y}, {rim - 0.02, 0.01 - y}, {rim - 0.008, -y - 0.004}, {rim, -y}}, 28,
        false, 1));
    return mesh.take();
}

/// Rust is never of one colour: dark scale, orange bloom, a little bare metal on the ridges.
void rusted(Geometry& geometry) {
    for (Geometry::Vertex& vertex : geometry.vertices) {
        const glm::dvec3 p = 60.0 * glm::dvec3(vertex.position);
        const double bloom = 0.5 + 0.25 * (std::sin(p.x + 1.7 * p.y) + std::sin(1.3 * p.z - 0.9 * p.y + 2));
        const double scale = 0.5 + 0.5 * std::sin(2.3 * p.y + p.x) * std::sin(1.9 * p.z + 0.7 * p.y);
        const glm::dvec3 dark(0.34, 0.3, 0.34), orange(2.2, 1.8, 1.1);
        const glm::dvec3 colour = glm::mix(dark, orange, bloom) * (0.55 + 0.6 * scale);
        vertex.colour = glm::vec4(colour, 1);
        vertex.roughness = static_cast<float>(0.75 + 0.3 * bloom);
    }
}

}  // namespace

void cap(Node& parent) {
    coarser(part(parent, crownCap(6),
                 {Materials::pbr(RGB{0.75, 0.12, 0.1}, 0.7, 0.45),
                  Materials::pbr(RGB{0.75, 0.75, 0.72}, 0.9, 0.4), aluminium()},
                 {}, {quarter, 0, 0}),
            crownCap(4));
}

void can(Node& parent, Textures& textures) {
    const MaterialRef label = Materials::pictured(textures.canLabel(), 0.6, 0.35);
    label->diffuseMap.wrapS = Wrap::repeat;
    Node& crushed = part(parent, crushedCan(56, 22), {label, aluminium(), aluminium()}, {}, {0, 0, 0.2});
    crushed.scale = {1, 0.85, 0.82};
    coarser(crushed, crushedCan(40, 14));
}

void nail(Node& parent) {
    MeshBuilder mesh;
    // From under the head to where it is bent, and on to its point.
    const glm::dvec3 head(0, 0.31, 0), bend(0, -0.11, 0),
        point = bend + 0.3 * glm::dvec3(std::sin(0.6), -std::cos(0.6), 0);
    std::vector<glm::dvec3> path;
    std::vector<double> radii;
    Xorshift draws(29);
    const auto run = [&](const glm::dvec3& from, const glm::dvec3& to, int steps, int tapered) {
        for (int i = 0; i < steps; ++i) {
            path.push_back(glm::mix(from, to, static_cast<double>(i) / steps) +
                           0.003 * glm::dvec3(draws.unit() - 0.5, 0, draws.unit() - 0.5));
            const double left = static_cast<double>(steps - i) / tapered;
            radii.push_back(0.028 * (0.92 + 0.16 * draws.unit()) * std::min(1.0, 0.25 + left));
        }
    };
    run(head, bend, 10, 1);
    run(bend, point, 8, 4);
    path.push_back(point);
    radii.push_back(0.004);
    Geometry shank = shapes::bar(path, radii, 10);
    rusted(shank);
    mesh.append(shank);
    // The head was hammered: not quite round, its edge turned down.
    Geometry disc = shapes::lathe(
        {{0.02, 0.3}, {0.062, 0.3075, true}, {0.07, 0.318}, {0.06, 0.33}, {0, 0.3345}}, 14, false, 1);
    disc = mesh::displaced(std::move(disc), [](const glm::dvec3& p) {
        const double turn = std::atan2(p.z, p.x),
                     dent = 1 + 0.07 * std::sin(2 * turn + 1) + 0.04 * std::sin(5 * turn);
        return glm::dvec3(p.x * dent, p.y + 0.05 * p.x * (p.y > 0.31 ? 1 : 0), p.z * dent);
    });
    rusted(disc);
    mesh.append(disc);
    part(parent, mesh.take(), {rust()});
}

void foil(Node& parent) {
    // A sheet pressed into a ball: folds run over it in all directions, sharp where the sheet is doubled, and
    // between them it is flat and soft. Every corner is moved by draws of its own as well.
    const auto crumpled = [](const glm::dvec3& p) {
        const glm::dvec3 n = glm::normalize(p);
        constexpr std::array<glm::dvec3, 7> folds{{{0.9, 0.3, -0.3},
                                                   {-0.2, 0.8, 0.6},
                                                   {0.5, -0.6, 0.6},
                                                   {-0.7, -0.1, 0.7},
                                                   {0.1, 0.5, -0.9},
                                                   {0.7, 0.7, 0.2},
                                                   {-0.5, 0.6, -0.6}}};
        double height = 0;
        for (std::size_t i = 0; i < folds.size(); ++i) {
            // A saw's teeth across the fold: straight flanks with a sharp ridge between.
            const double across =
                (2.1 + 0.45 * static_cast<double>(i)) * glm::dot(n, folds[i]) + 0.37 * static_cast<double>(i);
            height += std::abs(across - std::floor(across + 0.5)) * (i < 3 ? 1.0 : 0.55);
        }
        const double stray = std::sin(71 * n.x + 37 * n.z) * std::sin(57 * n.y + 23 * n.x);
        return p * (0.74 + 0.27 * height / 1.4 + 0.02 * stray);
    };
    Geometry ball = mesh::displaced(primitives::geodesicSphere(0.2, 7), crumpled);
    ball = mesh::withNormals(std::move(ball), 28);
    // Light is lost in the valleys.
    for (Geometry::Vertex& vertex : ball.vertices) {
        const double height = static_cast<double>(glm::length(vertex.position)) / 0.2;
        const double light = std::clamp(0.6 + 2.2 * (height - 0.84), 0.38, 0.7);
        vertex.colour = glm::vec4(glm::vec3(static_cast<float>(light)), 1);
        vertex.roughness = static_cast<float>(height > 0.95 ? 1.0 : 1.4);
    }
    Node& node = part(parent, ball, {Materials::pbr(RGB{0.85, 0.86, 0.9}, 1, 0.32)}, {}, {0.4, 0.7, 0.2});
    node.scale = {1.2, 0.7, 0.9};
}

}  // namespace gull::itemParts
