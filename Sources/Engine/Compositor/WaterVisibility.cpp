#include "Engine/Compositor/WaterVisibility.h"

#include <cmath>
#include <glm/geometric.hpp>

namespace gull {

namespace {

/// How far waves spread the sun's reflection over the water: the angle between the reflected ray and the sun,
/// radians. On no beach did glow from water more than 8 degrees off make a visible difference.
constexpr double glitterSpread = 0.21;

/// Rays to test along each side.
constexpr int rays = 32;

}  // namespace

bool covers(const DrawItem& water, const Viewpoint& view, const PixelArea& area, double highest) {
    const Box sheet = transformed(water.mesh->bounds, water.model);
    if (sheet.min.y < highest) return false;
    for (const int x : {area.x, area.right()})
        for (const int y : {area.y, area.top()}) {
            const auto [from, way] = view.ray(x, y);
            if (way.y >= 0) return false;
            for (const double height : {sheet.min.y, sheet.max.y}) {
                const glm::dvec3 met = from + way * ((height - from.y) / way.y);
                if (met.x < sheet.min.x || met.x > sheet.max.x || met.z < sheet.min.z || met.z > sheet.max.z)
                    return false;
            }
        }
    return true;
}

bool glitters(const Viewpoint& view, const PixelArea& area, const glm::dvec3& toward) {
    const double least = std::cos(glitterSpread);
    for (int row = 0; row <= rays; ++row)
        for (int column = 0; column <= rays; ++column) {
            const glm::dvec3 way = view.ray(area.x + area.width * column / double{rays},
                                            area.y + area.height * row / double{rays})
                                       .way;
            const glm::dvec3 mirrored = glm::normalize(glm::dvec3(way.x, -way.y, way.z));
            if (mirrored.y > 0 && glm::dot(mirrored, toward) > least) return true;
        }
    return false;
}

}  // namespace gull
