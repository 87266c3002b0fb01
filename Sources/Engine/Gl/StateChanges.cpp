#include "Engine/Gl/StateChanges.h"

namespace gull {

ContextState contextState(const DrawState& draw) {
    return {draw.target.framebuffer,
            draw.target.viewport,
            draw.target.scissor,
            draw.program ? draw.program->pipeline() : 0,
            draw.vertexArray,
            draw.frameUniforms,
            draw.depthTest,
            draw.writesDepth,
            draw.writesColour,
            draw.blending,
            draw.culling};
}

std::uint32_t stateChanges(const std::optional<ContextState>& before, const ContextState& after) {
    if (!before) return everyPiece;
    std::uint32_t changes = 0;
    const auto compare = [&](StatePiece piece, const auto& from, const auto& to) {
        if (!(from == to)) changes |= piece;
    };
    compare(framebufferPiece, before->framebuffer, after.framebuffer);
    compare(viewportPiece, before->viewport, after.viewport);
    compare(scissorPiece, before->scissor, after.scissor);
    compare(pipelinePiece, before->pipeline, after.pipeline);
    compare(vertexArrayPiece, before->vertexArray, after.vertexArray);
    compare(frameUniformsPiece, before->frameUniforms, after.frameUniforms);
    compare(depthTestPiece, before->depthTest, after.depthTest);
    compare(depthMaskPiece, before->writesDepth, after.writesDepth);
    compare(colourMaskPiece, before->writesColour, after.writesColour);
    compare(blendingPiece, before->blending, after.blending);
    compare(cullingPiece, before->culling, after.culling);
    return changes;
}

}  // namespace gull
