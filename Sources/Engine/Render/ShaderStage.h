#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace gull {

/// The body of a shader (one of Shaders.h) and the "#define" lines that it is compiled with.
struct ShaderSource {
    std::string_view body;
    std::vector<std::string> defines = {};
};

/// A vertex or a fragment shader, linked by itself. Belongs to the context in which it was made.
class ShaderStage {
  public:
    enum class Kind { vertex, fragment };

    /// Throws std::runtime_error with the driver's message and the name of the `program` that asks for it
    /// when it does not compile.
    ShaderStage(Kind kind, std::string_view program, const std::string& source);
    ~ShaderStage();
    ShaderStage(const ShaderStage&) = delete;
    ShaderStage& operator=(const ShaderStage&) = delete;

    unsigned name() const { return name_; }
    /// -1 for a uniform that it does not use.
    int location(const char* uniform) const;

  private:
    unsigned name_ = 0;
    mutable std::unordered_map<std::string, int> locations_;
};

/// The vertex shaders in use. Programs with the same one share it: a rasteriser in software takes as long to
/// compile a vertex shader as a small fragment shader, for every program anew.
class VertexStages {
  public:
    /// Throws as ShaderStage does.
    std::shared_ptr<const ShaderStage> get(std::string_view program, const ShaderSource& source);

  private:
    std::map<std::string, std::weak_ptr<const ShaderStage>> stages_;  ///< by their whole source
};

/// What is compiled for a fragment shader.
std::string fragmentSource(const ShaderSource& source);

/// A compiler's `messages` with file and line in place of the numbers that it knows (see shaders::fileNames):
/// "0:30012(5): error" becomes "blur.frag.glsl:12(5): error". Before the first file stand the "#define"
/// lines.
std::string withFileNames(const std::string& messages);

}  // namespace gull
