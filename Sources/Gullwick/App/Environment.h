#pragma once

#include <optional>
#include <string>
#include <vector>

namespace gull {

/// A variable of the process's environment; empty if it is not set (a variable may be set to nothing).
std::optional<std::string> environmentVariable(const char* name);

/// GULLWICK_SCALE: pixels per point, 0.5 to 4. Empty if it is not set; an invalid value is reported on
/// standard error and ignored.
std::optional<double> requestedScale();

/// One sentence for each of GW_CAM, GW_LOOK and GW_FOV that the scene's camera cannot use.
std::vector<std::string> cameraComplaints();

}  // namespace gull
