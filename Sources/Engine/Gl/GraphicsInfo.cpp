#include "Engine/Gl/GraphicsInfo.h"

#include <epoxy/gl.h>
#include <fmt/format.h>

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

std::string contextProblem() {
    constexpr int samplesWanted = 4;  // at edges
    const int version = epoxy_gl_version();
    if (version < 33 || (version < 41 && !epoxy_has_gl_extension("GL_ARB_separate_shader_objects")))
        return fmt::format(
            "OpenGL 4.1, or 3.3 with separate shader objects, is needed; this machine offers \"{}\"",
            graphicsInfo().version);
    GLint samples = 0;
    glGetIntegerv(GL_MAX_COLOR_TEXTURE_SAMPLES, &samples);
    if (samples < samplesWanted)
        return fmt::format(
            "OpenGL with {} samples a pixel is needed; \"{}\" has {}. Where GALLIUM_DRIVER is set, unset it: "
            "Mesa "
            "then draws by llvmpipe, which has them",
            samplesWanted, graphicsInfo().renderer, samples);
    return {};
}

ShaderDialect shaderDialect() {
    constexpr int mostVaryings = 32;  // locations used by a vertex shader with all varyings
    GLint components = 0;
    glGetIntegerv(GL_MAX_VERTEX_OUTPUT_COMPONENTS, &components);
    return {epoxy_gl_version() >= 41, components >= mostVaryings * 4};
}

}  // namespace gull
