#pragma once

#include <string>

namespace gull {

/// Describes the current OpenGL context, for diagnosis and for the choice of tier.
struct GraphicsInfo {
    std::string vendor;
    std::string renderer;
    std::string version;
    bool isSoftware = false;  ///< a rasteriser on the CPU
    int maximumSize = 0;      ///< largest side of a picture, pixels
};

GraphicsInfo graphicsInfo();

/// What the current context lacks for the game, in words for the player; empty when it has all.
std::string contextProblem();

/// What shader sources need to know about a context.
struct ShaderDialect {
    bool isVersion410 = true;     ///< else 330 with separate shader objects as an extension
    bool hasManyVaryings = true;  ///< room for every output of the vertex shaders
};

/// The current context's dialect.
ShaderDialect shaderDialect();

}  // namespace gull
