#pragma once

#include "Engine/Gl/StateKeeper.h"
#include "Engine/Gl/Uniforms.h"

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace gull {

/// The name of a sampler in the shaders and the texture unit that it reads.
using SamplerUnit = std::pair<const char*, int>;

/// A vertex or a fragment shader, linked by itself. Belongs to the context in which it was made.
class ShaderStage {
  public:
    enum class Kind { vertex, fragment };

    /// `units` lists every sampler that the source may use. Throws std::runtime_error with the driver's
    /// message and the name of the `program` that needs the shader if it does not compile.
    ShaderStage(StateKeeper& keeper, Kind kind, std::string_view program, const std::string& source,
                std::span<const SamplerUnit> units);
    ~ShaderStage();
    ShaderStage(const ShaderStage&) = delete;
    ShaderStage& operator=(const ShaderStage&) = delete;

    unsigned name() const { return name_; }
    /// Does nothing when the shader does not use the uniform. `uniform` must live as long as the stage.
    void set(const char* uniform, const UniformValue& value) const;
    /// Gives every uniform but the samplers a value that no draw wants.
    void spoilUniforms() const;

  private:
    int location(const char* uniform) const;

    unsigned name_ = 0;
    mutable std::vector<std::pair<const char*, int>> locations_;
};

}  // namespace gull
