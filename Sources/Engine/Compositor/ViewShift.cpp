#include "Engine/Compositor/ViewShift.h"

#include <algorithm>
#include <cmath>

namespace gull {

namespace {

/// World x, z on the ground to clip x, y, w.
glm::dmat3 groundToClip(const Viewpoint& view) {
    const glm::dmat4& m = view.viewProjection;
    const auto column = [&](int c) { return glm::dvec3(m[c].x, m[c].y, m[c].w); };
    return {column(0), column(2), column(3)};
}

}  // namespace

glm::dmat3 groundWarp(const Viewpoint& from, const Viewpoint& to) {
    const glm::dmat3 toPlace(glm::dvec3(0.5, 0, 0), glm::dvec3(0, 0.5, 0), glm::dvec3(0.5, 0.5, 1));
    return toPlace * groundToClip(from) * glm::inverse(groundToClip(to)) * glm::inverse(toPlace);
}

double shift(const Viewpoint& a, const Viewpoint& b) {
    constexpr double apart = 1e9;
    if (!(a.size == b.size) || a.projection != b.projection) return apart;
    if (a.viewProjection == b.viewProjection) return 0;
    const glm::dmat3 warp = groundWarp(a, b);
    double most = 0;
    // Corners and middle of the lower three quarters, which show ground in any view that has some.
    for (const double x : {0.0, 0.5, 1.0})
        for (const double y : {0.0, 0.4, 0.75}) {
            const glm::dvec3 p = warp * glm::dvec3(x, y, 1);
            if (!(p.z > 1e-6)) return apart;
            most = std::max(
                {most, std::abs(p.x / p.z - x) * a.size.width, std::abs(p.y / p.z - y) * a.size.height});
        }
    return most;
}

}  // namespace gull
