#include "Engine/Compositor/MovingShadow.h"

#include "Engine/Render/RenderContext.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/matrix_transform.hpp>

namespace gull {

namespace {

/// A caster is marked in pieces of at most this length, world units, so that a slanting pole does not mark
/// its whole diagonal.
constexpr double pieceLength = 0.4;

/// The bounds in `toAxes` of the part of `box` between two shares of its longest side.
Box partBounds(const Box& box, const glm::dmat4& toAxes, int axis, double from, double to) {
    Box part = box;
    part.min[axis] = box.min[axis] + (box.max[axis] - box.min[axis]) * from;
    part.max[axis] = box.min[axis] + (box.max[axis] - box.min[axis]) * to;
    return transformed(part, toAxes);
}

/// Marks in `relief` what the shadow of `item` may reach and returns its bounds in the sun's axes.
Box markCaster(const DrawItem& item, double edgeRadius, ReliefGrid& relief) {
    const glm::dmat4 turn(relief.sunAxes());
    const Box& local = item.mesh->bounds;
    const glm::dvec3 size = local.size();
    const int axis = size.x > size.y ? (size.x > size.z ? 0 : 2) : (size.y > size.z ? 1 : 2);
    const double length = size[axis] * glm::length(glm::dvec3(item.model[axis]));
    const int pieces = static_cast<int>(std::clamp(std::ceil(length / pieceLength), 1.0, 32.0));
    Box bounds;
    for (int i = 0; i < pieces; ++i) {
        Box part =
            partBounds(local, turn * item.model, axis, static_cast<double>(i) / pieces, (i + 1.0) / pieces);
        bounds.include(part);
        part.min -= glm::dvec3(edgeRadius * 1.5);
        part.max += glm::dvec3(edgeRadius * 1.5);
        relief.markShadow(part);
    }
    return bounds;
}

}  // namespace

TextureRef MovingShadow::draw(RenderContext& context, const DrawLayer& moving, const Sun& sun,
                              FrameBlock& block, ReliefGrid& relief) {
    if (!sun.castsShadow()) return {};
    const Light& light = *sun.light;
    const double radius = std::max(light.shadowRadius, 0.5) / 4096 * 2 * light.shadowOrthographicScale;
    Box casters;
    for (const DrawItem& item : moving.opaque)
        if (item.castsShadow) casters.include(markCaster(item, radius, relief));
    if (casters.empty()) return {};

    double half = std::max({casters.size().x, casters.size().y, 0.5}) * 0.5 * 1.06;
    // In steps, so that a turning rig does not make the map's texels swim.
    half = std::ceil(half * 4) / 4;
    const glm::dvec3 middle = (casters.min + casters.max) * 0.5;
    const double near = -casters.max.z - 0.5, far = -casters.min.z + 30;
    const glm::dmat4 toMap =
        glm::translate(glm::dmat4(1), glm::dvec3(0.5)) * glm::scale(glm::dmat4(1), glm::dvec3(0.5)) *
        glm::ortho(middle.x - half, middle.x + half, middle.y - half, middle.y + half, near, far) *
        glm::dmat4(relief.sunAxes());
    const std::pair shown(casterHash(moving), toMap);
    if (drawn_ != shown) {
        const DrawLayer* layers[] = {&moving};
        map_.draw(context, layers, {toMap, mapSize, true});
        drawn_ = shown;
    }
    const double texel = 2 * half / mapSize;
    const RenderOptions& options = context.options;
    block.movingSunMatrix = glm::mat4(toMap);
    block.movingShape = {std::max(radius, texel) / (2 * half), options.shadowNormalOffset * texel,
                         options.shadowDepthBias * sun.light->shadowBias / (far - near), 0};
    return map_.texture();
}

}  // namespace gull
