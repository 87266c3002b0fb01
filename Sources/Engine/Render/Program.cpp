#include "Engine/Render/Program.h"

#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>
#include <fmt/format.h>

#include <glm/gtc/type_ptr.hpp>
#include <stdexcept>
#include <utility>

namespace gull {

namespace {

unsigned compile(GLenum kind, std::string_view name, std::string_view head, std::string_view body) {
    std::string_view shared = kind == GL_FRAGMENT_SHADER ? shaders::lighting : std::string_view("");
    const GLchar* parts[] = {head.data(), shaders::common.data(), shared.data(), body.data()};
    const GLint lengths[] = {static_cast<GLint>(head.size()), static_cast<GLint>(shaders::common.size()),
                             static_cast<GLint>(shared.size()), static_cast<GLint>(body.size())};
    GLuint shader = glCreateShader(kind);
    glShaderSource(shader, 4, parts, lengths);
    glCompileShader(shader);
    GLint done = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &done);
    if (done) return shader;
    char log[4096] = "";
    glGetShaderInfoLog(shader, sizeof log, nullptr, log);
    glDeleteShader(shader);
    throw std::runtime_error(fmt::format("The graphics driver refuses the {} {} shader:\n{}", name,
                                         kind == GL_VERTEX_SHADER ? "vertex" : "fragment", log));
}

}  // namespace

Program::Program(std::string_view name, std::string_view vertex, std::string_view fragment,
                 const std::vector<std::string>& defines) {
    std::string head = "#version 330 core\n";
    for (const std::string& define : defines) head += "#define " + define + "\n";
    GLuint vertexShader = compile(GL_VERTEX_SHADER, name, head + "#define VERTEX\n", vertex);
    GLuint fragmentShader = compile(GL_FRAGMENT_SHADER, name, head, fragment);
    name_ = glCreateProgram();
    glAttachShader(name_, vertexShader);
    glAttachShader(name_, fragmentShader);
    glLinkProgram(name_);
    for (const GLuint shader : {vertexShader, fragmentShader}) {
        glDetachShader(name_, shader);  // attached ones live as long as the program
        glDeleteShader(shader);
    }
    GLint done = 0;
    glGetProgramiv(name_, GL_LINK_STATUS, &done);
    if (!done) {
        char log[4096] = "";
        glGetProgramInfoLog(name_, sizeof log, nullptr, log);
        glDeleteProgram(name_);
        throw std::runtime_error(fmt::format("The graphics driver cannot link {}:\n{}", name, log));
    }
    if (GLuint block = glGetUniformBlockIndex(name_, "Frame"); block != GL_INVALID_INDEX)
        glUniformBlockBinding(name_, block, FrameBlock::binding);
    use();
    for (const auto& [uniform, unit] : textureUnitNames()) set(uniform, unit);
}

Program::~Program() {
    if (name_ != 0) glDeleteProgram(name_);
}

Program::Program(Program&& other) noexcept
    : name_(std::exchange(other.name_, 0)), locations_(std::move(other.locations_)) {}

void Program::use() const {
    glUseProgram(name_);
}

int Program::location(const char* uniform) const {
    auto [place, isNew] = locations_.try_emplace(uniform, -1);
    if (isNew) place->second = glGetUniformLocation(name_, uniform);
    return place->second;
}

void Program::set(const char* uniform, int value) const {
    glUniform1i(location(uniform), value);
}
void Program::set(const char* uniform, float value) const {
    glUniform1f(location(uniform), value);
}
void Program::set(const char* uniform, const glm::vec2& value) const {
    glUniform2fv(location(uniform), 1, glm::value_ptr(value));
}
void Program::set(const char* uniform, const glm::vec3& value) const {
    glUniform3fv(location(uniform), 1, glm::value_ptr(value));
}
void Program::set(const char* uniform, const glm::vec4& value) const {
    glUniform4fv(location(uniform), 1, glm::value_ptr(value));
}
void Program::set(const char* uniform, const glm::mat3& value) const {
    glUniformMatrix3fv(location(uniform), 1, GL_FALSE, glm::value_ptr(value));
}
void Program::set(const char* uniform, const glm::mat4& value) const {
    glUniformMatrix4fv(location(uniform), 1, GL_FALSE, glm::value_ptr(value));
}

}  // namespace gull
