#pragma once

namespace gull {

/// Finds the machine's devices as the game would, prints what was found and chosen, and returns 0.
int printDevices();

}  // namespace gull
