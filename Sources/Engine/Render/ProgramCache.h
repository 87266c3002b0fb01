#pragma once

#include "Engine/Gl/GraphicsInfo.h"
#include "Engine/Gl/Program.h"
#include "Engine/Render/ProgramKey.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace gull {

/// The sources that a program is compiled from.
struct ProgramSource {
    std::string name;  ///< for messages
    std::string vertex;
    std::string fragment;
};

ProgramSource programSource(const ProgramKey& key, const ShaderDialect& dialect);

/// Compiles a stage from `text`. Throws std::runtime_error with the driver's message, its places named by
/// file and line, when it does not compile.
std::shared_ptr<const ShaderStage> compileStage(StateKeeper& keeper, ShaderStage::Kind kind,
                                                const std::string& name, const std::string& text);

/// Replaces the line numbers in a compiler's messages by the shader files' names and lines.
std::string withFileNames(const std::string& messages);

/// Every program of the renderer, compiled on first use. Programs with equal shaders share them, because a
/// software rasteriser takes as long to compile a vertex shader as a small fragment shader.
class ProgramCache {
  public:
    explicit ProgramCache(StateKeeper& keeper) : keeper_(keeper), dialect_(shaderDialect()) {}

    /// The reference is valid as long as the cache. Throws std::runtime_error with the driver's message when
    /// a shader does not compile.
    const Program& get(const ProgramKey& key);
    bool has(const ProgramKey& key) const { return programs_.count(key) != 0; }
    /// The keys of all programs requested so far.
    std::vector<ProgramKey> keys() const;

  private:
    std::shared_ptr<const ShaderStage> stage(ShaderStage::Kind kind, const std::string& name,
                                             const std::string& text);

    StateKeeper& keeper_;
    ShaderDialect dialect_;
    std::map<ProgramKey, Program> programs_;
    std::map<std::string, std::shared_ptr<const ShaderStage>> stages_;  ///< by complete source
};

}  // namespace gull
