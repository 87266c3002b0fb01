#pragma once

#include <string>

namespace gull {

/// What the current OpenGL context is, for diagnosis and for the choice of tier.
struct GraphicsInfo {
    std::string vendor;
    std::string renderer;
    std::string version;
    bool isSoftware = false;  ///< a rasteriser on the CPU
    int maximumSize = 0;      ///< of a picture's side, pixels
};

GraphicsInfo graphicsInfo();

/// What decides how shaders are written for a context.
struct ShaderDialect {
    bool isVersion410 = true;     ///< else 330 with separate shader objects as an extension
    bool hasManyVaryings = true;  ///< room for all that the vertex shaders may hand over
};

/// That of the current context.
ShaderDialect shaderDialect();

}  // namespace gull
