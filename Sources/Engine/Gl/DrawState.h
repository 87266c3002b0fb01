#pragma once

#include "Engine/Gl/PixelArea.h"
#include "Engine/Gl/Program.h"
#include "Engine/Gl/TextureRef.h"
#include "Engine/Gl/Uniforms.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace gull {

/// Where a pass draws.
struct DrawTarget {
    unsigned framebuffer = 0;          ///< 0: the window's
    PixelArea viewport;                ///< may reach beyond the framebuffer, for a tile of a larger picture
    std::optional<PixelArea> scissor;  ///< pixels of the framebuffer outside of which nothing changes

    DrawTarget within(const PixelArea& area) const { return {framebuffer, viewport, area}; }
};

enum class DepthTest : std::uint8_t {
    off,  ///< nothing is compared or written
    less,
    lessOrEqual,
    greater,
    always,
};

/// How a fragment combines with the target's colour; colours are premultiplied.
enum class Blending : std::uint8_t { off, over, add };

/// Which faces are culled. `backMirrored`: the back faces of a mirrored model.
enum class Culling : std::uint8_t { off, back, backMirrored };

/// Everything a draw call depends on. Nothing carries over from earlier draws.
struct DrawState {
    DrawTarget target;
    const Program* program = nullptr;  ///< borrowed
    unsigned vertexArray = 0;
    unsigned frameUniforms = 0;            ///< the buffer behind the shaders' Frame block; 0: they read none
    std::vector<TextureBinding> textures;  ///< every texture the program reads
    Uniforms uniforms;
    DepthTest depthTest = DepthTest::off;
    bool writesDepth = false;
    bool writesColour = true;
    Blending blending = Blending::off;
    Culling culling = Culling::off;
};

/// A run of vertices, or of indices, three to a triangle.
struct VertexRange {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
};

}  // namespace gull
