#pragma once

#include "Engine/Gl/GraphicsInfo.h"
#include "Engine/Gl/Program.h"
#include "Engine/Render/ProgramKey.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace gull {

/// The texts that a program is compiled from.
struct ProgramSource {
    std::string name;  ///< for messages
    std::string vertex;
    std::string fragment;
};

ProgramSource programSource(const ProgramKey& key, const ShaderDialect& dialect);

/// A stage of `text`. Throws std::runtime_error with the driver's message, its places named by file and line,
/// when it does not compile.
std::shared_ptr<const ShaderStage> compileStage(StateKeeper& keeper, ShaderStage::Kind kind,
                                                const std::string& name, const std::string& text);

/// Puts the shader files' names and lines in place of the line numbers in a compiler's messages.
std::string withFileNames(const std::string& messages);

/// Every program of the renderer, compiled when it is first asked for. Programs with equal shaders share
/// them: a software rasteriser takes as long to compile a vertex shader as a small fragment shader.
class ProgramCache {
  public:
    explicit ProgramCache(StateKeeper& keeper) : keeper_(keeper), dialect_(shaderDialect()) {}

    /// The reference lasts as long as the cache. Throws std::runtime_error with the driver's message when a
    /// shader does not compile.
    const Program& get(const ProgramKey& key);
    bool has(const ProgramKey& key) const { return programs_.count(key) != 0; }
    /// All that have been asked for.
    std::vector<ProgramKey> keys() const;

  private:
    std::shared_ptr<const ShaderStage> stage(ShaderStage::Kind kind, const std::string& name,
                                             const std::string& text);

    StateKeeper& keeper_;
    ShaderDialect dialect_;
    std::map<ProgramKey, Program> programs_;
    std::map<std::string, std::shared_ptr<const ShaderStage>> stages_;  ///< by their whole text
};

}  // namespace gull
