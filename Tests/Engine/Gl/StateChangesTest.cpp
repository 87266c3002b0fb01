#include "Engine/Gl/StateChanges.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace gull {
namespace {

TEST(StateChanges, setsEverythingOnceAndThenOnlyWhatDiffers) {
    ContextState state;
    EXPECT_EQ(stateChanges(std::nullopt, state), everyPiece) << "nothing is known";
    EXPECT_EQ(stateChanges(state, state), 0U);

    const std::pair<StatePiece, std::function<void(ContextState&)>> changes[] = {
        {framebufferPiece, [](ContextState& s) { s.framebuffer = 3; }},
        {viewportPiece,
         [](ContextState& s) {
             s.viewport = {-4, 0, 8, 8};
         }},
        {scissorPiece,
         [](ContextState& s) {
             s.scissor = PixelArea{0, 0, 8, 8};
         }},
        {pipelinePiece, [](ContextState& s) { s.pipeline = 2; }},
        {vertexArrayPiece, [](ContextState& s) { s.vertexArray = 5; }},
        {frameUniformsPiece, [](ContextState& s) { s.frameUniforms = 7; }},
        {depthTestPiece, [](ContextState& s) { s.depthTest = DepthTest::less; }},
        {depthMaskPiece, [](ContextState& s) { s.writesDepth = true; }},
        {colourMaskPiece, [](ContextState& s) { s.writesColour = false; }},
        {blendingPiece, [](ContextState& s) { s.blending = Blending::add; }},
        {cullingPiece, [](ContextState& s) { s.culling = Culling::backMirrored; }},
    };
    std::uint32_t all = 0;
    for (const auto& [piece, change] : changes) {
        ContextState next = state;
        change(next);
        EXPECT_EQ(stateChanges(state, next), static_cast<std::uint32_t>(piece));
        EXPECT_EQ(stateChanges(next, state), static_cast<std::uint32_t>(piece)) << "and back";
        all |= piece;
    }
    EXPECT_EQ(all, static_cast<std::uint32_t>(everyPiece)) << "every piece was tried";
}

TEST(StateChanges, aDrawsStateIsTakenOverWhole) {
    DrawState draw;
    draw.target = {4, {0, 0, 9, 9}, PixelArea{1, 1, 2, 2}};
    draw.vertexArray = 6;
    draw.frameUniforms = 8;
    draw.depthTest = DepthTest::always;
    draw.writesDepth = true;
    draw.writesColour = false;
    draw.blending = Blending::over;
    draw.culling = Culling::back;
    const ContextState state = contextState(draw);
    EXPECT_EQ(stateChanges(ContextState{}, state), everyPiece & ~pipelinePiece) << "no program is named";
    EXPECT_EQ(state.scissor, (PixelArea{1, 1, 2, 2}));
}

}  // namespace
}  // namespace gull
