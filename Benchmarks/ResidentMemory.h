#pragma once

#include <cstdlib>
#include <fstream>
#include <string>

namespace gull {

/// Resident memory of this process, MB; 0 if the system does not report it.
inline double residentMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::atof(line.c_str() + 6) / 1024;
    return 0;
}

}  // namespace gull
