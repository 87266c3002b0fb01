#pragma once

#include <map>
#include <string>
#include <vector>

namespace gull {

/// The sources of the house: text by path below Sources, e.g. "Engine/Loop/Clock.h".
using SourceTree = std::map<std::string, std::string>;

/// Every include that points the wrong way, as "file: fault"; also files outside the known rooms and includes
/// of headers that do not exist. Empty when the house is in order.
std::vector<std::string> includeViolations(const SourceTree& sources);

/// Calls of OpenGL outside the rooms that own it, as "file: call".
std::vector<std::string> openGlCallsOutside(const SourceTree& sources);

/// Obstacles to entering the renderer's rooms: units (a header with its source) that include each other in a
/// circle, and files of more than 300 lines.
std::vector<std::string> rendererViolations(const SourceTree& sources);

}  // namespace gull
