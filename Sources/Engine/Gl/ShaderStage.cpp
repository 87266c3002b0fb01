#include "Engine/Gl/ShaderStage.h"

#include "Engine/Gl/UniformBuffer.h"

#include <epoxy/gl.h>
#include <fmt/format.h>

#include <cstring>
#include <glm/gtc/type_ptr.hpp>
#include <optional>
#include <stdexcept>

namespace gull {

namespace {

/// Sets a uniform of the program `stage` at `place` to a value of any of its types.
struct Setter {
    GLuint stage;
    GLint place;

    void operator()(int v) const { glProgramUniform1i(stage, place, v); }
    void operator()(float v) const { glProgramUniform1f(stage, place, v); }
    void operator()(const glm::vec2& v) const { glProgramUniform2fv(stage, place, 1, glm::value_ptr(v)); }
    void operator()(const glm::vec3& v) const { glProgramUniform3fv(stage, place, 1, glm::value_ptr(v)); }
    void operator()(const glm::vec4& v) const { glProgramUniform4fv(stage, place, 1, glm::value_ptr(v)); }
    void operator()(const std::vector<glm::vec4>& v) const {
        glProgramUniform4fv(stage, place, static_cast<GLsizei>(v.size()), glm::value_ptr(v.front()));
    }
    void operator()(const glm::mat3& v) const {
        glProgramUniformMatrix3fv(stage, place, 1, GL_FALSE, glm::value_ptr(v));
    }
    void operator()(const glm::mat4& v) const {
        glProgramUniformMatrix4fv(stage, place, 1, GL_FALSE, glm::value_ptr(v));
    }
};

/// A value of the uniform type `type` that spoils a picture; empty for samplers and types that no draw sets.
std::optional<UniformValue> uselessValue(GLenum type) {
    constexpr float useless = -1e4F;
    switch (type) {
        case GL_INT:
            return 0;
        case GL_FLOAT:
            return useless;
        case GL_FLOAT_VEC2:
            return glm::vec2(useless);
        case GL_FLOAT_VEC3:
            return glm::vec3(useless);
        case GL_FLOAT_VEC4:
            return glm::vec4(useless);
        case GL_FLOAT_MAT3:
            return glm::mat3(useless);
        case GL_FLOAT_MAT4:
            return glm::mat4(useless);
        default:
            return std::nullopt;
    }
}

}  // namespace

ShaderStage::ShaderStage(StateKeeper& keeper, Kind kind, std::string_view program, const std::string& source,
                         std::span<const SamplerUnit> units) {
    keeper.forgetState();
    const GLchar* text = source.c_str();
    name_ = glCreateShaderProgramv(kind == Kind::vertex ? GL_VERTEX_SHADER : GL_FRAGMENT_SHADER, 1, &text);
    GLint done = 0;
    glGetProgramiv(name_, GL_LINK_STATUS, &done);
    if (!done) {
        char log[4096] = "";
        glGetProgramInfoLog(name_, sizeof log, nullptr, log);
        glDeleteProgram(name_);
        throw std::runtime_error(fmt::format("The graphics driver refuses the {} {} shader:\n{}", program,
                                             kind == Kind::vertex ? "vertex" : "fragment", log));
    }
    if (const GLuint block = glGetUniformBlockIndex(name_, "Frame"); block != GL_INVALID_INDEX)
        glUniformBlockBinding(name_, block, frameBlockBinding);
    for (const auto& [sampler, unit] : units)
        if (const int place = location(sampler); place >= 0) glProgramUniform1i(name_, place, unit);
}

ShaderStage::~ShaderStage() {
    glDeleteProgram(name_);
}

void ShaderStage::set(const char* uniform, const UniformValue& value) const {
    if (const int place = location(uniform); place >= 0) std::visit(Setter{name_, place}, value);
}

void ShaderStage::spoilUniforms() const {
    GLint count = 0;
    glGetProgramiv(name_, GL_ACTIVE_UNIFORMS, &count);
    for (GLint i = 0; i < count; ++i) {
        char name[64] = "";
        GLint size = 0;
        GLenum type = 0;
        glGetActiveUniform(name_, static_cast<GLuint>(i), sizeof name, nullptr, &size, &type, name);
        const GLint place = glGetUniformLocation(name_, name);
        if (place < 0) continue;  // a member of a block
        if (const auto value = uselessValue(type)) std::visit(Setter{name_, place}, *value);
    }
}

int ShaderStage::location(const char* uniform) const {
    // Names are literals, so usually the pointer itself is already known.
    for (const auto& [name, place] : locations_)
        if (name == uniform || std::strcmp(name, uniform) == 0) return place;
    return locations_.emplace_back(uniform, glGetUniformLocation(name_, uniform)).second;
}

}  // namespace gull
