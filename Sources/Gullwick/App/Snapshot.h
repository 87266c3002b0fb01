#pragma once

#include "Engine/Raster/Image.h"
#include "Gullwick/App/CommandLine.h"

#include <string>

namespace gull {

/// Pictures of a configured moment of play, rendered without a window: every step is driven by fixed times,
/// so the same command line with a seed gives the same picture.
namespace Snapshot {

/// Renders what `commandLine` asks for; the process's exit status.
int run(const CommandLine& commandLine);
/// Writes a PNG, making the folders on the way, and prints "wrote" and the path. A file that cannot be
/// written is told on standard error. False when the image cannot be encoded ("render failed" is printed
/// then).
bool write(const Image& image, const std::string& path);

}  // namespace Snapshot

}  // namespace gull
