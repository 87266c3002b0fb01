#pragma once

#include "Engine/Render/ShaderStage.h"

#include <glm/mat3x3.hpp>
#include <glm/mat4x4.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <glm/vec4.hpp>
#include <memory>
#include <string_view>

namespace gull {

/// A vertex and a fragment shader that work together. Uniforms are set by name, in both; one that neither
/// uses is ignored. Vertex shaders are shared, uniforms with them: what a draw needs is set before it.
class Program {
  public:
    /// Throws std::runtime_error with the driver's message and `name` when a shader does not compile.
    Program(VertexStages& stages, std::string_view name, const ShaderSource& vertex,
            const ShaderSource& fragment);
    ~Program();
    Program(Program&& other) noexcept;
    Program& operator=(Program&&) = delete;

    void use() const;
    void set(const char* uniform, int value) const;
    void set(const char* uniform, float value) const;
    void set(const char* uniform, const glm::vec2& value) const;
    void set(const char* uniform, const glm::vec3& value) const;
    void set(const char* uniform, const glm::vec4& value) const;
    void set(const char* uniform, const glm::mat3& value) const;
    void set(const char* uniform, const glm::mat4& value) const;

  private:
    std::shared_ptr<const ShaderStage> vertex_;
    std::unique_ptr<const ShaderStage> fragment_;
    unsigned pipeline_ = 0;
};

}  // namespace gull
