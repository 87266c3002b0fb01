#include "Engine/Compositor/PaintLayer.h"

#include "Engine/Render/MeshDraws.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

#include <algorithm>
#include <iterator>

namespace gull {

void PaintLayer::begin(RenderContext& context, const std::vector<DrawItem>& items, const PixelSize& size) {
    items_.clear();
    std::copy_if(items.begin(), items.end(), std::back_inserter(items_),
                 [](const DrawItem& item) { return static_cast<bool>(item.material->multiplyMap); });
    if (!items_.empty()) ensureSize(context.device, target_, size, {{Format::rgba8}});
}

void PaintLayer::draw(RenderContext& context, const Inputs& inputs, const PixelArea& area) {
    if (items_.empty() || area.empty()) return;
    DrawState state;
    state.target = target_.whole().within(area);
    state.program = &context.programs.get({ProgramKind::paint});
    state.frameUniforms = inputs.frameUniforms;
    context.device.clear(state.target, {{{1, 1, 1, 1}}, {}});
    for (const DrawItem& item : items_) {
        if (item.area.intersection(area).empty()) continue;
        const Channel& map = item.material->multiplyMap;
        state.culling = materialCulling(item);
        state.textures = {{unitStaticSurface, inputs.surface},
                          {unitStaticNormal, inputs.normal},
                          {unitStaticDepth, inputs.depth},
                          context.textures.binding(unitMultiply, map, TextureCache::Quality::base)};
        state.uniforms = {{"model", glm::mat4(item.model)},
                          {"place", glm::vec4(glm::vec2(map.scale), glm::vec2(map.offset))},
                          {"shape", glm::vec2(map.uvSet, map.intensity)}};
        drawMesh(context, state, item, inputs.view, area);
    }
}

}  // namespace gull
