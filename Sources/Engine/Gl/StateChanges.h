#pragma once

#include "Engine/Gl/DrawState.h"

#include <cstdint>
#include <optional>

namespace gull {

/// The context's state besides textures and uniforms: the part of a DrawState that is set only where it
/// differs.
struct ContextState {
    unsigned framebuffer = 0;
    PixelArea viewport;
    std::optional<PixelArea> scissor;
    unsigned pipeline = 0;
    unsigned vertexArray = 0;
    unsigned frameUniforms = 0;
    DepthTest depthTest = DepthTest::off;
    bool writesDepth = false;
    bool writesColour = true;
    Blending blending = Blending::off;
    Culling culling = Culling::off;

    bool operator==(const ContextState&) const = default;
};

ContextState contextState(const DrawState& draw);

/// The pieces of state, one bit each.
enum StatePiece : std::uint32_t {
    framebufferPiece = 1U << 0U,
    viewportPiece = 1U << 1U,
    scissorPiece = 1U << 2U,
    pipelinePiece = 1U << 3U,
    vertexArrayPiece = 1U << 4U,
    frameUniformsPiece = 1U << 5U,
    depthTestPiece = 1U << 6U,
    depthMaskPiece = 1U << 7U,
    colourMaskPiece = 1U << 8U,
    blendingPiece = 1U << 9U,
    cullingPiece = 1U << 10U,
    everyPiece = (1U << 11U) - 1,
};

/// The pieces to set when the state goes from `before` (empty: unknown) to `after`.
std::uint32_t stateChanges(const std::optional<ContextState>& before, const ContextState& after);

}  // namespace gull
