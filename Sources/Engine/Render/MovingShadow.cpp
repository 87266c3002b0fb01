#include "Engine/Render/MovingShadow.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/matrix_transform.hpp>

namespace gull {

namespace {

/// A caster is marked in pieces of this length at most, world units, so that a slanting pole does not mark
/// its whole diagonal.
constexpr double pieceLength = 0.4;

/// The bounds in `toAxes` of the part of `box` between two shares of its longest side.
Box partBounds(const Box& box, const glm::dmat4& toAxes, int axis, double from, double to) {
    Box part = box;
    part.min[axis] = box.min[axis] + (box.max[axis] - box.min[axis]) * from;
    part.max[axis] = box.min[axis] + (box.max[axis] - box.min[axis]) * to;
    return transformed(part, toAxes);
}

}  // namespace

bool MovingShadow::draw(const DrawLayer& moving, const Sun& sun, const Program& depthFromSun,
                        const RenderOptions& options, FrameBlock& block, ReliefGrid& relief) {
    if (!sun.light || !sun.light->castsShadow) return false;
    const Light& light = *sun.light;
    double radius = std::max(light.shadowRadius, 0.5) / 4096 * 2 * light.shadowOrthographicScale;
    glm::dmat4 turn(relief.sunAxes());
    Box casters;
    for (const DrawItem& item : moving.opaque) {
        if (!item.castsShadow) continue;
        const Box& local = item.mesh->bounds;
        glm::dvec3 size = local.size();
        int axis = size.x > size.y ? (size.x > size.z ? 0 : 2) : (size.y > size.z ? 1 : 2);
        double length = size[axis] * glm::length(glm::dvec3(item.model[axis]));
        int pieces = static_cast<int>(std::clamp(std::ceil(length / pieceLength), 1.0, 32.0));
        for (int i = 0; i < pieces; ++i) {
            Box part = partBounds(local, turn * item.model, axis, static_cast<double>(i) / pieces,
                                  (i + 1.0) / pieces);
            casters.include(part);
            part.min -= glm::dvec3(radius * 1.5);
            part.max += glm::dvec3(radius * 1.5);
            relief.markShadow(part);
        }
    }
    if (casters.empty()) return false;

    double half = std::max({casters.size().x, casters.size().y, 0.5}) * 0.5 * 1.06;
    // In steps, so that a turning rig does not make the map's texels swim.
    half = std::ceil(half * 4) / 4;
    glm::dvec3 middle = (casters.min + casters.max) * 0.5;
    double near = -casters.max.z - 0.5, far = -casters.min.z + 30;
    glm::dmat4 toMap =
        glm::translate(glm::dmat4(1), glm::dvec3(0.5)) * glm::scale(glm::dmat4(1), glm::dvec3(0.5)) *
        glm::ortho(middle.x - half, middle.x + half, middle.y - half, middle.y + half, near, far) * turn;
    const std::pair shown(casterHash(moving), toMap);
    if (drawn_ != shown) {
        map_.draw({&moving}, toMap, mapSize, depthFromSun, true);
        drawn_ = shown;
    }
    double texel = 2 * half / mapSize;
    block.movingSunMatrix = glm::mat4(toMap);
    block.movingShape = {std::max(radius, texel) / (2 * half), options.shadowNormalOffset * texel,
                         options.shadowDepthBias / (far - near), 0};
    return true;
}

}  // namespace gull
