#include "Engine/Render/ShadowMap.h"

#include "Engine/Render/MeshDraws.h"
#include "Engine/Render/RenderContext.h"

#include <glm/gtc/matrix_transform.hpp>

namespace gull {

namespace {

/// The view through `matrix` (world to 0..1 on all axes).
Viewpoint lookingAlong(const glm::dmat4& matrix, const PixelSize& size) {
    Viewpoint light;
    light.size = size;
    light.viewProjection =
        glm::translate(glm::dmat4(1), glm::dvec3(-1)) * glm::scale(glm::dmat4(1), glm::dvec3(2)) * matrix;
    return light;
}

Culling casterCulling(const DrawItem& item, const ShadowMap::Projection& projection) {
    if (!projection.solid || item.material->doubleSided) return Culling::off;
    // Depth falls toward the sun, which mirrors the picture.
    return glm::determinant(glm::dmat3(projection.matrix * item.model)) < 0 ? Culling::back
                                                                            : Culling::backMirrored;
}

}  // namespace

void ShadowMap::prepare(RenderContext& context, int size) {
    if (target_ && target_.size().width == size) return;
    target_ = {};
    target_ = makeShadowMap(context.device, size);
}

void ShadowMap::draw(RenderContext& context, std::span<const DrawLayer* const> layers,
                     const Projection& projection) {
    prepare(context, projection.size);
    context.device.clear(target_.whole(), {{}, 1});
    for (const DrawLayer* layer : layers) drawCasters(context, *layer, projection, target_.whole());
}

void ShadowMap::redraw(RenderContext& context, const DrawLayer& layer, const Projection& projection,
                       const Box& changed) {
    const PixelSize size{projection.size, projection.size};
    const PixelArea part = lookingAlong(projection.matrix, size).area(changed).grown(2);
    drawPart(context, layer, projection, part.intersection(PixelArea::whole(size)));
}

void ShadowMap::drawPart(RenderContext& context, const DrawLayer& layer, const Projection& projection,
                         const PixelArea& part) {
    if (part.empty()) return;
    prepare(context, projection.size);
    const DrawTarget target = target_.whole().within(part);
    context.device.clear(target, {{}, 1});
    drawCasters(context, layer, projection, target);
}

void ShadowMap::drawCasters(RenderContext& context, const DrawLayer& layer, const Projection& projection,
                            const DrawTarget& target) {
    const Viewpoint light = lookingAlong(projection.matrix, target_.size());
    const PixelArea part = target.scissor.value_or(target.viewport);
    DrawState state;
    state.target = target;
    state.program = &context.programs.get({ProgramKind::sunDepth});
    state.depthTest = DepthTest::less;
    state.writesDepth = true;
    for (const DrawItem& item : layer.opaque) {
        if (!item.castsShadow) continue;
        state.culling = casterCulling(item, projection);
        state.uniforms = {{"toLight", glm::mat4(projection.matrix * item.model)}};
        drawMesh(context, state, item, light, part);
    }
}

}  // namespace gull
