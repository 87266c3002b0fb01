#pragma once

#include "Gullwick/App/CommandLine.h"

namespace gull {

/// The self-test as a mode of the program: in real time, without window, sound or files. Prints its lines to
/// standard output, each at once; returns the process's exit status.
int runSelfTest(const CommandLine& commandLine);

}  // namespace gull
