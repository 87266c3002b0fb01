#pragma once

#include <glm/mat3x3.hpp>
#include <glm/mat4x4.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <glm/vec4.hpp>
#include <utility>
#include <variant>
#include <vector>

namespace gull {

/// A vector is an array of the shader's, which may be longer; it must not be empty.
using UniformValue =
    std::variant<int, float, glm::vec2, glm::vec3, glm::vec4, glm::mat3, glm::mat4, std::vector<glm::vec4>>;

/// The uniforms of one draw, by the names that the shaders give them; the names are literals. A name that a
/// program does not use is ignored, so that one list serves several variants.
using Uniforms = std::vector<std::pair<const char*, UniformValue>>;

}  // namespace gull
