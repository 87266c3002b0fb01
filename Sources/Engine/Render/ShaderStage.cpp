#include "Engine/Render/ShaderStage.h"

#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>
#include <fmt/format.h>

#include <regex>
#include <stdexcept>

namespace gull {

namespace {

/// Locations that a vertex shader with all varyings fills.
constexpr int mostVaryings = 32;

/// A graphics card that has no room for all varyings gets uniforms instead, as small things do.
bool hasManyVaryings() {
    GLint components = 0;
    glGetIntegerv(GL_MAX_VERTEX_OUTPUT_COMPONENTS, &components);
    return components >= mostVaryings * 4;
}

std::string head(const std::vector<std::string>& defines) {
    std::string lines = epoxy_gl_version() >= 41 ? "#version 410 core\n"
                                                 : "#version 330 core\n"
                                                   "#extension GL_ARB_separate_shader_objects : require\n";
    if (!hasManyVaryings()) lines += "#define SMALL\n";
    for (const std::string& define : defines) lines += "#define " + define + "\n";
    return lines;
}

}  // namespace

ShaderStage::ShaderStage(Kind kind, std::string_view program, const std::string& source) {
    const GLchar* text = source.c_str();
    name_ = glCreateShaderProgramv(kind == Kind::vertex ? GL_VERTEX_SHADER : GL_FRAGMENT_SHADER, 1, &text);
    GLint done = 0;
    glGetProgramiv(name_, GL_LINK_STATUS, &done);
    if (!done) {
        char log[4096] = "";
        glGetProgramInfoLog(name_, sizeof log, nullptr, log);
        glDeleteProgram(name_);
        throw std::runtime_error(fmt::format("The graphics driver refuses the {} {} shader:\n{}", program,
                                             kind == Kind::vertex ? "vertex" : "fragment",
                                             withFileNames(log)));
    }
    if (const GLuint block = glGetUniformBlockIndex(name_, "Frame"); block != GL_INVALID_INDEX)
        glUniformBlockBinding(name_, block, FrameBlock::binding);
    for (const auto& [sampler, unit] : textureUnitNames())
        if (const int place = location(sampler); place >= 0) glProgramUniform1i(name_, place, unit);
}

ShaderStage::~ShaderStage() {
    glDeleteProgram(name_);
}

int ShaderStage::location(const char* uniform) const {
    auto [place, isNew] = locations_.try_emplace(uniform, -1);
    if (isNew) place->second = glGetUniformLocation(name_, uniform);
    return place->second;
}

std::shared_ptr<const ShaderStage> VertexStages::get(std::string_view program, const ShaderSource& source) {
    std::string text = head(source.defines) + "#define VERTEX\n";
    text.append(source.body);
    std::weak_ptr<const ShaderStage>& known = stages_[text];
    std::shared_ptr<const ShaderStage> stage = known.lock();
    if (!stage) known = stage = std::make_shared<ShaderStage>(ShaderStage::Kind::vertex, program, text);
    return stage;
}

std::string fragmentSource(const ShaderSource& source) {
    return head(source.defines).append(source.body);
}

std::string withFileNames(const std::string& messages) {
    // How drivers tell it: "0:30012(5): error" (Mesa), "0(30012) : error" (NVIDIA), "ERROR: 0:30012: "
    // (others).
    static const std::regex place(R"(\b\d+([:(])(\d{1,4})(\d{4})\b)");
    std::string named;
    auto rest = messages.cbegin();
    for (std::sregex_iterator match(messages.begin(), messages.end(), place), end; match != end; ++match) {
        const std::size_t file = std::stoul((*match)[2]);
        if (file == 0 || file > shaders::fileNames.size()) continue;
        named.append(rest, (*match)[0].first).append(shaders::fileNames[file - 1]);
        named.append((*match)[1]).append(std::to_string(std::stoul((*match)[3])));
        rest = (*match)[0].second;
    }
    return named.append(rest, messages.cend());
}

}  // namespace gull
