#include "Engine/Render/WaterMirror.h"

#include "Engine/Render/FlatPasses.h"
#include "Engine/Render/FrameUniforms.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/SurfacePass.h"

#include <algorithm>
#include <glm/gtc/matrix_access.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/matrix.hpp>

namespace gull {

namespace {

constexpr int smaller = 3;            // than the view, a side
constexpr double leastHeight = 0.25;  // of what is worth mirroring, above the water

/// `projection` with its near plane in `plane`, given in the camera's space; the camera stands on its
/// negative side. (E. Lengyel, "Oblique View Frustum Depth Projection and Clipping", 2005)
glm::dmat4 clipped(glm::dmat4 projection, const glm::dvec4& plane) {
    const glm::dmat4& p = projection;
    const glm::dvec4 corner((glm::sign(plane.x) + p[2][0]) / p[0][0],
                            (glm::sign(plane.y) + p[2][1]) / p[1][1], -1, (1 + p[2][2]) / p[3][2]);
    const glm::dvec4 row = plane * (2 / glm::dot(plane, corner)) + glm::dvec4(0, 0, 1, 0);
    return glm::row(projection, 2, row);
}

/// The view of the upper world in a mirror at `level`, its left and right exchanged so that faces keep their
/// winding.
Viewpoint mirrored(const Viewpoint& view, double level) {
    Viewpoint mirrored = view;
    mirrored.size = {(view.size.width + smaller - 1) / smaller, (view.size.height + smaller - 1) / smaller};
    const glm::dmat4 flip =
        glm::translate(glm::dmat4(1), {0, 2 * level, 0}) * glm::scale(glm::dmat4(1), {1, -1, 1});
    const glm::dmat4 toCamera = glm::inverse(view.world) * flip;
    const glm::dvec4 above = glm::dvec4(0, 1, 0, -level) * glm::inverse(toCamera);
    mirrored.viewProjection =
        glm::scale(glm::dmat4(1), {-1, 1, 1}) * clipped(view.projection, above) * toCamera;
    mirrored.eye.y = 2 * level - view.eye.y;
    return mirrored;
}

}  // namespace

void WaterMirror::draw(RenderContext& context, const Stage& stage, const DrawList& list,
                       const Viewpoint& view, double level, TextureRef sunShadow) {
    level_ = level;
    picture_ = {};
    if (view.camera.orthographicScale || view.eye.y <= level) return;
    const Viewpoint mirror = mirrored(view, level);
    GraphicsDevice& device = context.device;
    picture_ = Target(device, mirror.size, {{Format::rgba16f}});
    const Target samples(device, mirror.size, {{Format::rgba16f}, Format::depth24, 4});
    device.clear(samples.whole(), {{{0, 0, 0, 0}}, 1});

    const auto environment = context.environments.get(stage.environment, list.sun.onGround());
    FrameBlock block = frameBlock(stage, mirror, list, environment.irradiance, context.options);
    setLamps(block, {});
    FrameUniforms frame(device);
    frame.upload(block);
    SurfacePass pass{samples.whole(), frame.name(), mirror, {}, {}, InverseToneMapping(block)};
    pass.inputs.environment = environment.cube;
    pass.inputs.sunShadow = sunShadow;
    pass.shading.output = Shading::Output::staticLayer;
    pass.shading.sunShadow = static_cast<bool>(sunShadow);
    pass.shading.contactShadows = true;  // the programs of the static layer

    const PixelArea whole = PixelArea::whole(mirror.size);
    const DrawList seen = DrawList::of(stage, mirror, context.meshes);
    for (const DrawItem& item : seen.still.opaque) {
        const double top = transformed(item.mesh->bounds, item.model).max.y;
        if (item.castsShadow && top > level + leastHeight) drawSurface(context, pass, item, whole);
    }
    resolve(context, samples, {&whole, 1}, picture_, 0, 0);
}

std::optional<double> waterLevel(const DrawLayer& layer) {
    for (const DrawItem& item : layer.blended)
        if (isWater(item) && !isFilm(item)) return transformed(item.mesh->bounds, item.model).max.y;
    return std::nullopt;
}

}  // namespace gull
