#pragma once

#include "Engine/Render/ShaderStage.h"

#include <string>
#include <vector>

namespace gull::test {

struct ProgramSource {
    std::string name;
    ShaderSource vertex;
    ShaderSource fragment;
};

/// Every program that the game can ask for, each once.
std::vector<ProgramSource> allPrograms();

}  // namespace gull::test
