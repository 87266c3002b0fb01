#include "Engine/Render/MovingShadow.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/matrix_transform.hpp>

namespace gull {

namespace {

/// How far below the lowest caster the ground may still catch its shadow, world units.
constexpr double groundBelow = 1.2;

Box worldBounds(const DrawItem& item) {
    Box box;
    const Box& local = item.mesh->bounds;
    for (int corner = 0; corner < 8; ++corner)
        box.include(glm::dvec3(item.model * glm::dvec4(corner & 1 ? local.max.x : local.min.x,
                                                       corner & 2 ? local.max.y : local.min.y,
                                                       corner & 4 ? local.max.z : local.min.z, 1)));
    return box;
}

}  // namespace

PixelArea MovingShadow::draw(const DrawLayer& moving, const Sun& sun, const View& view,
                             const Program& depthFromSun, const RenderOptions& options, FrameBlock& block) {
    if (!sun.light || !sun.light->castsShadow) return {};
    // Axes of the sun's view, then the casters' extent along them.
    glm::dvec3 up = std::abs(sun.toward.y) < 0.99 ? glm::dvec3(0, 1, 0) : glm::dvec3(1, 0, 0);
    glm::dmat4 turn = glm::lookAt(glm::dvec3(0), -sun.toward, up);
    Box across, casters;
    std::vector<Box> boxes;
    for (const DrawItem& item : moving.opaque) {
        if (!item.castsShadow) continue;
        boxes.push_back(worldBounds(item));
        casters.include(boxes.back());
        const Box& local = item.mesh->bounds;
        for (int corner = 0; corner < 8; ++corner)
            across.include(glm::dvec3(turn * item.model *
                                      glm::dvec4(corner & 1 ? local.max.x : local.min.x,
                                                 corner & 2 ? local.max.y : local.min.y,
                                                 corner & 4 ? local.max.z : local.min.z, 1)));
    }
    if (boxes.empty()) return {};

    double half = std::max({across.size().x, across.size().y, 0.5}) * 0.5 * 1.06;
    // Rounded up so that a turning rig does not make the map's texels swim.
    half = std::ceil(half * 4) / 4;
    glm::dvec3 middle = (across.min + across.max) * 0.5;
    double near = -across.max.z - 0.5, far = -across.min.z + 30;
    glm::dmat4 toMap =
        glm::translate(glm::dmat4(1), glm::dvec3(0.5)) * glm::scale(glm::dmat4(1), glm::dvec3(0.5)) *
        glm::ortho(middle.x - half, middle.x + half, middle.y - half, middle.y + half, near, far) * turn;
    map_.draw({&moving}, toMap, mapSize, depthFromSun);

    const Light& light = *sun.light;
    double radius = std::max(light.shadowRadius, 0.5) / 4096 * 2 * light.shadowOrthographicScale;
    double texel = 2 * half / mapSize;
    block.movingSunMatrix = glm::mat4(toMap);
    block.movingShape = {std::max(radius, texel) / (2 * half), options.shadowNormalOffset * texel,
                         options.shadowDepthBias / (far - near), 0};

    PixelArea area;
    double ground = casters.min.y - groundBelow;
    for (const Box& box : boxes) {
        Box swept = box;
        for (int corner = 0; corner < 4; ++corner)
            for (double y : {box.min.y, box.max.y}) {
                glm::dvec3 p(corner & 1 ? box.max.x : box.min.x, y, corner & 2 ? box.max.z : box.min.z);
                swept.include(p - sun.toward * ((y - ground) / std::max(sun.toward.y, 0.2)));
            }
        area = area.united(view.area(swept));
    }
    return area;
}

}  // namespace gull
