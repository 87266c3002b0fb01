#pragma once

#include <glm/mat3x3.hpp>
#include <glm/mat4x4.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <glm/vec4.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace gull {

/// A linked pair of shaders. Uniforms are set by name; one that the linker dropped is ignored.
class Program {
  public:
    /// `defines` become "#define" lines at the head of both sources. Throws std::runtime_error with the
    /// driver's message and `name` when it does not compile.
    Program(std::string_view name, std::string_view vertex, std::string_view fragment,
            const std::vector<std::string>& defines = {});
    ~Program();
    Program(Program&& other) noexcept;
    Program& operator=(Program&&) = delete;

    void use() const;
    /// The program must be in use.
    void set(const char* uniform, int value) const;
    void set(const char* uniform, float value) const;
    void set(const char* uniform, const glm::vec2& value) const;
    void set(const char* uniform, const glm::vec3& value) const;
    void set(const char* uniform, const glm::vec4& value) const;
    void set(const char* uniform, const glm::mat3& value) const;
    void set(const char* uniform, const glm::mat4& value) const;

  private:
    int location(const char* uniform) const;

    unsigned name_ = 0;
    mutable std::unordered_map<std::string, int> locations_;
};

}  // namespace gull
