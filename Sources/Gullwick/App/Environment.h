#pragma once

#include <optional>
#include <string>
#include <vector>

namespace gull {

/// A variable of the process's environment; nothing when it is not set (an empty one is set).
std::optional<std::string> environmentVariable(const char* name);

/// GULLWICK_SCALE: pixels a point, 0.5 to 4. Nothing when it is not set; a value that is none is told on
/// standard error and left out.
std::optional<double> requestedScale();

/// One sentence for each of GW_CAM, GW_LOOK and GW_FOV that the scene's camera can make nothing of.
std::vector<std::string> cameraComplaints();

}  // namespace gull
