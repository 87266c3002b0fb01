#include "Engine/Gl/GraphicsInfo.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <string_view>

namespace gull {

namespace {

std::string glString(GLenum name) {
    const auto* text = reinterpret_cast<const char*>(glGetString(name));
    return text ? text : "";
}

}  // namespace

GraphicsInfo graphicsInfo() {
    GraphicsInfo info{glString(GL_VENDOR), glString(GL_RENDERER), glString(GL_VERSION), false, 0};
    for (std::string_view name : {"llvmpipe", "softpipe", "swrast", "SWR", "Software"})
        if (info.renderer.find(name) != std::string::npos) info.isSoftware = true;
    GLint texture = 0, viewport[2] = {0, 0};
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &texture);
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
    info.maximumSize = std::min({texture, viewport[0], viewport[1]});
    return info;
}

ShaderDialect shaderDialect() {
    constexpr int mostVaryings = 32;  // locations used by a vertex shader with all varyings
    GLint components = 0;
    glGetIntegerv(GL_MAX_VERTEX_OUTPUT_COMPONENTS, &components);
    return {epoxy_gl_version() >= 41, components >= mostVaryings * 4};
}

}  // namespace gull
