#include "Gullwick/Scene/Lathe.h"

#include "Engine/Log/Require.h"
#include "Engine/Stage/MeshBuilder.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <glm/vec2.hpp>
#include <numbers>

namespace gull::shapes {

namespace {

constexpr double pi = std::numbers::pi;
constexpr double tiny = 1e-9;

glm::dvec2 normalizedIfLong(const glm::dvec2& v) {
    const double length = glm::length(v);
    return length < tiny ? v : v / length;
}

}  // namespace

Geometry lathe(const std::vector<ProfilePoint>& profile, int segments, bool flatAround, double uvScale) {
    require(segments >= 3, "a lathe of {} segments", segments);
    MeshBuilder mesh;
    const std::size_t edges = profile.size() < 2 ? 0 : profile.size() - 1;

    std::vector<double> along{0};
    std::vector<glm::dvec2> faces;
    for (std::size_t i = 0; i < edges; ++i) {
        const glm::dvec2 step(profile[i + 1].r - profile[i].r, profile[i + 1].y - profile[i].y);
        along.push_back(along.back() + glm::length(step));
        faces.push_back(normalizedIfLong({step.y, -step.x}));
    }
    const double total = std::max(along.back(), tiny);

    for (std::size_t i = 0; i < edges; ++i) {
        const ProfilePoint& from = profile[i];
        const ProfilePoint& to = profile[i + 1];
        const bool smoothFrom = i > 0 && !from.hard && !flatAround;
        const bool smoothTo = i + 1 < edges && !to.hard && !flatAround;
        const glm::dvec2 normalFrom = smoothFrom ? normalizedIfLong(faces[i - 1] + faces[i]) : faces[i];
        const glm::dvec2 normalTo = smoothTo ? normalizedIfLong(faces[i] + faces[i + 1]) : faces[i];
        const auto add = [&](const ProfilePoint& point, const glm::dvec2& normal, double s, int k,
                             double normalTurn) {
            // The last column coincides exactly with the first.
            const double angle = k == segments ? 0 : 2 * pi * k / segments;
            const double turned = 2 * pi * normalTurn / segments;
            return mesh.vertex({point.r * std::cos(angle), point.y, point.r * std::sin(angle)},
                               {normal.x * std::cos(turned), normal.y, normal.x * std::sin(turned)},
                               {uvScale * k / segments, s / total});
        };
        std::uint32_t lower = 0, upper = 0;
        for (int k = 0; k < segments; ++k) {
            if (flatAround || k == 0) {
                const double turn = flatAround ? k + 0.5 : k;
                lower = add(from, normalFrom, along[i], k, turn);
                upper = add(to, normalTo, along[i + 1], k, turn);
            }
            const double turn = flatAround ? k + 0.5 : k + 1;
            const std::uint32_t nextLower = add(from, normalFrom, along[i], k + 1, turn);
            const std::uint32_t nextUpper = add(to, normalTo, along[i + 1], k + 1, turn);
            mesh.quad(nextLower, lower, upper, nextUpper);
            lower = nextLower;
            upper = nextUpper;
        }
    }
    return mesh.take();
}

Geometry gem(double radius, int facets) {
    // A pointed pavilion, a thin girdle, a sloping crown and a flat table.
    return lathe({{0, -0.95 * radius, true},
                  {radius, 0, true},
                  {0.98 * radius, 0.08 * radius, true},
                  {0.6 * radius, 0.42 * radius, true},
                  {0, 0.42 * radius, true}},
                 facets, true, 1);
}

Geometry bar(const std::vector<glm::dvec3>& path, const std::vector<double>& radii, int sides) {
    require(path.size() >= 2 && !radii.empty() && sides >= 3, "a bar of {} points, {} radii and {} sides",
            path.size(), radii.size(), sides);
    const auto radiusAt = [&](std::size_t i) { return radii[std::min(i, radii.size() - 1)]; };
    const auto directionAt = [&](std::size_t i) {
        const glm::dvec3& before = path[i == 0 ? 0 : i - 1];
        const glm::dvec3& after = path[std::min(i + 1, path.size() - 1)];
        return glm::normalize(after - before);
    };
    MeshBuilder mesh;
    // The frame is carried along the path, so the bar does not twist.
    glm::dvec3 direction = directionAt(0);
    glm::dvec3 side = glm::normalize(
        glm::cross(direction, std::abs(direction.y) < 0.9 ? glm::dvec3(0, 1, 0) : glm::dvec3(1, 0, 0)));
    std::vector<std::uint32_t> ring, previous;
    std::vector<glm::dvec3> rim;
    for (std::size_t i = 0; i < path.size(); ++i) {
        direction = directionAt(i);
        side = glm::normalize(side - direction * glm::dot(side, direction));
        const glm::dvec3 across = glm::cross(direction, side);
        const double v = static_cast<double>(i) / static_cast<double>(path.size() - 1);
        previous = std::move(ring);
        ring.clear();
        rim.clear();
        for (int k = 0; k <= sides; ++k) {
            const double angle = k == sides ? 0 : 2 * pi * k / sides;
            const glm::dvec3 out = side * std::cos(angle) + across * std::sin(angle);
            rim.push_back(path[i] + out * radiusAt(i));
            ring.push_back(mesh.vertex(rim.back(), out, {static_cast<double>(k) / sides, v}));
        }
        if (i > 0) {
            for (std::size_t k = 0; k < static_cast<std::size_t>(sides); ++k) {
                mesh.quad(previous[k], previous[k + 1], ring[k + 1], ring[k]);
            }
        }
        if (i == 0 || i + 1 == path.size()) {
            const double facing = i == 0 ? -1 : 1;
            const std::uint32_t centre = mesh.vertex(path[i], direction * facing, {0.5, 0.5});
            std::vector<std::uint32_t> cap;
            cap.reserve(rim.size());
            for (const glm::dvec3& point : rim)
                cap.push_back(mesh.vertex(point, direction * facing, {0.5, 1}));
            for (std::size_t k = 0; k + 1 < cap.size(); ++k) {
                facing > 0 ? mesh.triangle(centre, cap[k], cap[k + 1])
                           : mesh.triangle(centre, cap[k + 1], cap[k]);
            }
        }
    }
    return mesh.take();
}

}  // namespace gull::shapes
