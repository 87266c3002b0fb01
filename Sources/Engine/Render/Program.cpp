#include "Engine/Render/Program.h"

#include <epoxy/gl.h>

#include <glm/gtc/type_ptr.hpp>
#include <utility>

namespace gull {

namespace {

/// Calls `set` with the name and the uniform's location of each stage that uses it.
template <class Set>
void inEach(std::initializer_list<const ShaderStage*> stages, const char* uniform, Set set) {
    for (const ShaderStage* stage : stages)
        if (const int place = stage->location(uniform); place >= 0) set(stage->name(), place);
}

}  // namespace

Program::Program(VertexStages& stages, std::string_view name, const ShaderSource& vertex,
                 const ShaderSource& fragment)
    : vertex_(stages.get(name, vertex)),
      fragment_(std::make_unique<ShaderStage>(ShaderStage::Kind::fragment, name, fragmentSource(fragment))) {
    glGenProgramPipelines(1, &pipeline_);
    glUseProgramStages(pipeline_, GL_VERTEX_SHADER_BIT, vertex_->name());
    glUseProgramStages(pipeline_, GL_FRAGMENT_SHADER_BIT, fragment_->name());
}

Program::~Program() {
    if (pipeline_ != 0) glDeleteProgramPipelines(1, &pipeline_);
}

Program::Program(Program&& other) noexcept
    : vertex_(std::move(other.vertex_)),
      fragment_(std::move(other.fragment_)),
      pipeline_(std::exchange(other.pipeline_, 0)) {}

void Program::use() const {
    glBindProgramPipeline(pipeline_);
}

void Program::set(const char* uniform, int value) const {
    inEach({vertex_.get(), fragment_.get()}, uniform,
           [&](GLuint stage, GLint place) { glProgramUniform1i(stage, place, value); });
}
void Program::set(const char* uniform, float value) const {
    inEach({vertex_.get(), fragment_.get()}, uniform,
           [&](GLuint stage, GLint place) { glProgramUniform1f(stage, place, value); });
}
void Program::set(const char* uniform, const glm::vec2& value) const {
    inEach({vertex_.get(), fragment_.get()}, uniform,
           [&](GLuint stage, GLint place) { glProgramUniform2fv(stage, place, 1, glm::value_ptr(value)); });
}
void Program::set(const char* uniform, const glm::vec3& value) const {
    inEach({vertex_.get(), fragment_.get()}, uniform,
           [&](GLuint stage, GLint place) { glProgramUniform3fv(stage, place, 1, glm::value_ptr(value)); });
}
void Program::set(const char* uniform, const glm::vec4& value) const {
    inEach({vertex_.get(), fragment_.get()}, uniform,
           [&](GLuint stage, GLint place) { glProgramUniform4fv(stage, place, 1, glm::value_ptr(value)); });
}
void Program::set(const char* uniform, const glm::mat3& value) const {
    inEach({vertex_.get(), fragment_.get()}, uniform, [&](GLuint stage, GLint place) {
        glProgramUniformMatrix3fv(stage, place, 1, GL_FALSE, glm::value_ptr(value));
    });
}
void Program::set(const char* uniform, const glm::mat4& value) const {
    inEach({vertex_.get(), fragment_.get()}, uniform, [&](GLuint stage, GLint place) {
        glProgramUniformMatrix4fv(stage, place, 1, GL_FALSE, glm::value_ptr(value));
    });
}

}  // namespace gull
