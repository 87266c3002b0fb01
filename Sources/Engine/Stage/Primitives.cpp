#include "Engine/Stage/Primitives.h"

#include "Engine/Log/Require.h"
#include "Engine/Stage/MeshBuilder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>
#include <vector>

namespace gull::primitives {

namespace {

constexpr double pi = std::numbers::pi;
// The share of a box's shortest side that a chamfer may take, so that every face keeps some width.
constexpr double greatestChamfer = 0.45;

/// A point on the circle around y at `turn` (0 to 1). Seen from outside, increasing turns run to the right;
/// the seam lies at the back.
glm::dvec2 onCircle(double turn) {
    return {-std::sin(2 * pi * turn), -std::cos(2 * pi * turn)};
}

/// A closed ribbon of quads between two circles about the y axis, listed from the upper one to the lower one,
/// with the normal (`out`, `up`) of each.
struct Rim {
    double radius;
    double y;
    double out;
    double up;
    double v;
};

void addBand(MeshBuilder& mesh, const Rim& upper, const Rim& lower, int segments) {
    const auto add = [&](const Rim& rim, double turn, double u) {
        const glm::dvec2 direction = onCircle(turn);
        return mesh.vertex({rim.radius * direction.x, rim.y, rim.radius * direction.y},
                           glm::normalize(glm::dvec3(rim.out * direction.x, rim.up, rim.out * direction.y)),
                           {u, rim.v});
    };
    for (int k = 0; k < segments; ++k) {
        const double from = static_cast<double>(k) / segments;
        const double to = static_cast<double>(k + 1) / segments;
        // The last column coincides exactly with the first.
        const double toTurn = k + 1 == segments ? 0 : to;
        const double middle = (from + to) / 2;
        if (upper.radius <= 0) {
            mesh.triangle(add(upper, middle, middle), add(lower, from, from), add(lower, toTurn, to));
        } else if (lower.radius <= 0) {
            mesh.triangle(add(upper, from, from), add(lower, middle, middle), add(upper, toTurn, to));
        } else {
            mesh.quad(add(upper, from, from), add(lower, from, from), add(lower, toTurn, to),
                      add(upper, toTurn, to));
        }
    }
}

/// A flat disc that faces up (`facing` 1) or down (-1), its picture upright as seen from outside.
void addDisc(MeshBuilder& mesh, double radius, double y, int segments, double facing) {
    const glm::dvec3 normal(0, facing, 0);
    const std::uint32_t centre = mesh.vertex({0, y, 0}, normal, {0.5, 0.5});
    std::vector<std::uint32_t> rim;
    for (int k = 0; k < segments; ++k) {
        const glm::dvec2 direction = onCircle(static_cast<double>(k) / segments);
        rim.push_back(mesh.vertex({radius * direction.x, y, radius * direction.y}, normal,
                                  {0.5 + 0.5 * facing * direction.x, 0.5 - 0.5 * direction.y}));
    }
    for (std::size_t k = 0; k < rim.size(); ++k) {
        const std::uint32_t here = rim[k];
        const std::uint32_t next = rim[(k + 1) % rim.size()];
        facing > 0 ? mesh.triangle(centre, here, next) : mesh.triangle(centre, next, here);
    }
}

void requirePositive(const char* shape, double a, double b, double c = 1) {
    require(a > 0 && b > 0 && c > 0, "a {} of {}, {}, {}", shape, a, b, c);
}

void requireSegments(const char* shape, int segments, int least = 3) {
    require(segments >= least, "a {} of {} segments", shape, segments);
}

}  // namespace

Geometry plane(double width, double height) {
    requirePositive("plane", width, height);
    MeshBuilder mesh;
    const double x = width / 2, y = height / 2;
    const glm::dvec3 normal(0, 0, 1);
    mesh.quad(mesh.vertex({-x, -y, 0}, normal, {0, 0}), mesh.vertex({x, -y, 0}, normal, {1, 0}),
              mesh.vertex({x, y, 0}, normal, {1, 1}), mesh.vertex({-x, y, 0}, normal, {0, 1}));
    return mesh.take();
}

Geometry box(double width, double height, double length, double chamfer) {
    requirePositive("box", width, height, length);
    require(chamfer >= 0, "a box with a chamfer of {}", chamfer);
    const double cut = std::min(chamfer, greatestChamfer * std::min({width, height, length}));
    const glm::dvec3 half(width / 2, height / 2, length / 2);
    MeshBuilder mesh;

    // A corner has one vertex for each of the three faces that meet there.
    std::array<std::array<std::uint32_t, 3>, 8> corners{};
    for (unsigned corner = 0; corner < 8; ++corner) {
        const glm::dvec3 sign((corner & 1) ? 1 : -1, (corner & 2) ? 1 : -1, (corner & 4) ? 1 : -1);
        for (int axis = 0; axis < 3; ++axis) {
            glm::dvec3 inset(cut);
            inset[axis] = 0;
            glm::dvec3 normal(0);
            normal[axis] = sign[axis];
            const glm::dvec3 position = sign * (half - inset);
            const glm::dvec3 unit = position / (2.0 * half);
            // Upright on the sides; seen from above on the top and bottom.
            glm::dvec2 uv;
            if (axis == 0) uv = {0.5 - sign.x * unit.z, 0.5 + unit.y};
            if (axis == 1) uv = {0.5 + unit.x, 0.5 - sign.y * unit.z};
            if (axis == 2) uv = {0.5 + sign.z * unit.x, 0.5 + unit.y};
            corners[corner][static_cast<std::size_t>(axis)] = mesh.vertex(position, normal, uv);
        }
    }
    // Orders a loop of vertices so that it faces outward in whichever octant it was mirrored into.
    const auto add = [&](bool flipped, std::initializer_list<std::uint32_t> loop) {
        std::vector<std::uint32_t> v(loop);
        if (flipped) std::reverse(v.begin(), v.end());
        v.size() == 4 ? mesh.quad(v[0], v[1], v[2], v[3]) : mesh.triangle(v[0], v[1], v[2]);
    };
    for (unsigned axis = 0; axis < 3; ++axis) {
        const unsigned a = 1u << axis, b = 1u << ((axis + 1) % 3), c = 1u << ((axis + 2) % 3);
        for (const unsigned side : {0u, a}) {
            add(side == 0, {corners[side][axis], corners[side | b][axis], corners[side | b | c][axis],
                            corners[side | c][axis]});
        }
        if (cut <= 0) continue;
        // The four cut edges that run along this axis, between the faces across b and across c.
        const unsigned faceB = (axis + 1) % 3, faceC = (axis + 2) % 3;
        for (const unsigned edge : {0u, b, c, b | c}) {
            const bool flipped = edge == b || edge == c;
            add(flipped, {corners[edge][faceB], corners[edge][faceC], corners[edge | a][faceC],
                          corners[edge | a][faceB]});
        }
    }
    if (cut > 0) {
        for (unsigned corner = 0; corner < 8; ++corner) {
            const unsigned bits = (corner & 1) + ((corner >> 1) & 1) + (corner >> 2);
            add(bits % 2 == 0, {corners[corner][0], corners[corner][1], corners[corner][2]});
        }
    }
    return mesh.take();
}

Geometry sphere(double radius, int segments) {
    requirePositive("sphere", radius, 1);
    requireSegments("sphere", segments, 4);
    const int stacks = segments / 2;
    MeshBuilder mesh;
    const auto rim = [&](int i) {
        const double angle = pi * i / stacks;
        const bool pole = i == 0 || i == stacks;
        return Rim{pole ? 0 : radius * std::sin(angle), radius * std::cos(angle), std::sin(angle),
                   std::cos(angle), 1 - static_cast<double>(i) / stacks};
    };
    for (int i = 0; i < stacks; ++i) addBand(mesh, rim(i), rim(i + 1), segments);
    return mesh.take();
}

Geometry cylinder(double radius, double height, int segments) {
    return cone(radius, radius, height, segments);
}

Geometry cone(double topRadius, double bottomRadius, double height, int segments) {
    require(topRadius >= 0 && bottomRadius >= 0 && topRadius + bottomRadius > 0 && height > 0,
            "a cone of radii {} and {} and height {}", topRadius, bottomRadius, height);
    requireSegments("cone", segments);
    MeshBuilder mesh;
    const double out = height, up = bottomRadius - topRadius;
    addBand(mesh, {topRadius, height / 2, out, up, 1}, {bottomRadius, -height / 2, out, up, 0}, segments);
    mesh.endElement();
    if (topRadius > 0) addDisc(mesh, topRadius, height / 2, segments, 1);
    mesh.endElement();
    if (bottomRadius > 0) addDisc(mesh, bottomRadius, -height / 2, segments, -1);
    return mesh.take();
}

Geometry torus(double ringRadius, double pipeRadius, int ringSegments, int pipeSegments) {
    requirePositive("torus", ringRadius, pipeRadius, ringRadius - pipeRadius);
    requireSegments("torus", ringSegments);
    requireSegments("torus's pipe", pipeSegments);
    MeshBuilder mesh;
    const auto rim = [&](int i) {
        // Starts on the inside, where the pipe's seam is hidden.
        const double angle = pi - 2 * pi * (i == pipeSegments ? 0 : i) / pipeSegments;
        return Rim{ringRadius + pipeRadius * std::cos(angle), pipeRadius * std::sin(angle), std::cos(angle),
                   std::sin(angle), 1 - static_cast<double>(i) / pipeSegments};
    };
    for (int i = 0; i < pipeSegments; ++i) addBand(mesh, rim(i), rim(i + 1), ringSegments);
    return mesh.take();
}

Geometry tube(double innerRadius, double outerRadius, double height, int segments) {
    requirePositive("tube", innerRadius, outerRadius - innerRadius, height);
    requireSegments("tube", segments);
    MeshBuilder mesh;
    const double y = height / 2;
    addBand(mesh, {outerRadius, y, 1, 0, 1}, {outerRadius, -y, 1, 0, 0}, segments);
    addBand(mesh, {innerRadius, -y, -1, 0, 0}, {innerRadius, y, -1, 0, 1}, segments);
    addBand(mesh, {innerRadius, y, 0, 1, 0}, {outerRadius, y, 0, 1, 1}, segments);
    addBand(mesh, {outerRadius, -y, 0, -1, 1}, {innerRadius, -y, 0, -1, 0}, segments);
    return mesh.take();
}

Geometry capsule(double capRadius, double height, int segments) {
    requirePositive("capsule", capRadius, height);
    require(height >= 2 * capRadius, "a capsule of radius {} and height {}", capRadius, height);
    requireSegments("capsule", segments, 4);
    const int capStacks = std::max(2, segments / 4);
    const double straight = height / 2 - capRadius;
    std::vector<Rim> rims;
    for (int i = 0; i <= 2 * capStacks + 1; ++i) {
        const bool upper = i <= capStacks;
        const double angle = pi / 2 * (upper ? i : i - 1) / capStacks;
        const bool pole = i == 0 || i == 2 * capStacks + 1;
        const double y = capRadius * std::cos(angle) + (upper ? straight : -straight);
        rims.push_back(
            {pole ? 0 : capRadius * std::sin(angle), y, std::sin(angle), std::cos(angle), 0.5 + y / height});
    }
    MeshBuilder mesh;
    for (std::size_t i = 0; i + 1 < rims.size(); ++i) {
        if (rims[i].y - rims[i + 1].y > 1e-9) addBand(mesh, rims[i], rims[i + 1], segments);
    }
    return mesh.take();
}

Geometry pyramid(double width, double height, double length) {
    requirePositive("pyramid", width, height, length);
    MeshBuilder mesh;
    const double x = width / 2, z = length / 2;
    const std::array<glm::dvec3, 4> foot{{{-x, 0, z}, {x, 0, z}, {x, 0, -z}, {-x, 0, -z}}};
    const glm::dvec3 tip(0, height, 0);
    for (std::size_t k = 0; k < 4; ++k) mesh.flatTriangle(foot[k], foot[(k + 1) % 4], tip);
    const glm::dvec3 down(0, -1, 0);
    mesh.quad(mesh.vertex(foot[3], down, {0, 0}), mesh.vertex(foot[2], down, {1, 0}),
              mesh.vertex(foot[1], down, {1, 1}), mesh.vertex(foot[0], down, {0, 1}));
    return mesh.take();
}

}  // namespace gull::primitives
