#include "Engine/Render/MeshDraws.h"

#include "Engine/Render/RenderContext.h"

namespace gull {

std::vector<VertexRange> visibleChunks(const DrawItem& item, const Viewpoint& view, const PixelArea& area,
                                       const Box& hidden) {
    std::vector<VertexRange> ranges;
    const bool cull = item.element.chunkCount > 1;
    for (std::size_t i = 0; i < item.element.chunkCount; ++i) {
        const Mesh::Chunk& chunk = item.mesh->chunks[item.element.firstChunk + i];
        if (cull && view.area(chunk.bounds, item.model).intersection(area).empty()) continue;
        if (!hidden.empty() && hidden.contains(transformed(chunk.bounds, item.model))) continue;
        if (!ranges.empty() && ranges.back().first + ranges.back().count == chunk.first)
            ranges.back().count += chunk.count;
        else
            ranges.push_back({chunk.first, chunk.count});
    }
    return ranges;
}

void drawMesh(RenderContext& context, DrawState& state, const DrawItem& item, const Viewpoint& view,
              const PixelArea& area, const Box& hidden) {
    state.vertexArray = item.mesh->vertices.vertexArray();
    context.device.drawIndexed(state, visibleChunks(item, view, area, hidden));
}

Culling materialCulling(const DrawItem& item) {
    if (item.material->doubleSided) return Culling::off;
    return glm::determinant(glm::dmat3(item.model)) < 0 ? Culling::backMirrored : Culling::back;
}

void drawDepth(RenderContext& context, const DrawTarget& target, unsigned frameUniforms, const DrawItem& item,
               const Viewpoint& view, const PixelArea& area) {
    if (!item.material->writesDepth || item.area.intersection(area).empty()) return;
    DrawState state;
    state.target = target;
    state.program = &context.programs.get({ProgramKind::depth});
    state.frameUniforms = frameUniforms;
    state.uniforms = {{"model", glm::mat4(item.model)}};
    state.depthTest = DepthTest::less;
    state.writesDepth = true;
    state.writesColour = false;
    state.culling = materialCulling(item);
    drawMesh(context, state, item, view, area);
}

void drawDepth(RenderContext& context, const DrawTarget& target, unsigned frameUniforms,
               std::span<const DrawItem> items, const Viewpoint& view) {
    const PixelArea area = target.scissor.value_or(PixelArea::whole(view.size));
    for (const DrawItem& item : items) drawDepth(context, target, frameUniforms, item, view, area);
}

}  // namespace gull
