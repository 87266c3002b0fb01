#pragma once

#include "Engine/Gl/ShaderStage.h"
#include "Engine/Gl/Uniforms.h"

#include <memory>

namespace gull {

/// A vertex and a fragment shader that work together. Programs may share a vertex shader, and uniforms belong
/// to the shader, so each draw sets every uniform it needs. Belongs to the context in which it was made.
class Program {
  public:
    Program(StateKeeper& keeper, std::shared_ptr<const ShaderStage> vertex,
            std::shared_ptr<const ShaderStage> fragment);
    ~Program();
    Program(Program&& other) noexcept;
    Program& operator=(Program&&) = delete;

    unsigned pipeline() const { return pipeline_; }
    void set(const Uniforms& uniforms) const;
    /// Gives every uniform a value that no draw wants.
    void spoilUniforms() const;

  private:
    std::shared_ptr<const ShaderStage> vertex_;
    std::shared_ptr<const ShaderStage> fragment_;
    unsigned pipeline_ = 0;
};

}  // namespace gull
