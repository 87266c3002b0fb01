#include "Engine/Gl/Program.h"

#include <epoxy/gl.h>

#include <utility>

namespace gull {

Program::Program(StateKeeper& keeper, std::shared_ptr<const ShaderStage> vertex,
                 std::shared_ptr<const ShaderStage> fragment)
    : vertex_(std::move(vertex)), fragment_(std::move(fragment)) {
    keeper.forgetState();
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

void Program::set(const Uniforms& uniforms) const {
    for (const auto& [name, value] : uniforms) {
        vertex_->set(name, value);
        fragment_->set(name, value);
    }
}

void Program::spoilUniforms() const {
    vertex_->spoilUniforms();
    fragment_->spoilUniforms();
}

}  // namespace gull
