#include "Engine/Render/FlatPasses.h"

#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

#include <vector>

namespace gull {

void drawScreen(RenderContext& context, DrawState state, float depth) {
    constexpr VertexRange triangle{0, 3};
    state.vertexArray = context.streams.noVertices.name();
    state.uniforms.emplace_back("depth", depth);
    context.device.draw(state, {&triangle, 1});
}

void drawAreas(RenderContext& context, DrawState state, std::span<const PixelArea> areas) {
    if (areas.empty()) return;
    std::vector<float> corners;
    corners.reserve(areas.size() * 12);
    for (const PixelArea& area : areas) {
        const auto left = static_cast<float>(area.x), right = static_cast<float>(area.right());
        const auto bottom = static_cast<float>(area.y), top = static_cast<float>(area.top());
        corners.insert(corners.end(),
                       {left, bottom, right, bottom, right, top, left, bottom, right, top, left, top});
    }
    const VertexRange all{0, context.streams.areas.upload(corners)};
    state.vertexArray = context.streams.areas.vertexArray();
    context.device.draw(state, {&all, 1});
}

void resolve(RenderContext& context, const Target& from, std::span<const PixelArea> parts, const Target& to,
             int x, int y) {
    DrawState state;
    state.target = to.firstColour();
    state.program = &context.programs.get({ProgramKind::resolve});
    state.textures = {{unitSource, from.colour()}};
    state.uniforms = {{"shift", glm::vec2(x, y)},
                      {"depth", 0.0F},
                      {"texel", glm::vec2(1.0 / to.size().width, 1.0 / to.size().height)}};
    drawAreas(context, std::move(state), parts);
}

}  // namespace gull
