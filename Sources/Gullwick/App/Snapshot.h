#pragma once

#include "Engine/Raster/Image.h"
#include "Gullwick/App/CommandLine.h"

#include <string>

namespace gull {

/// Pictures of a configured moment of play, rendered without a window: fixed times drive every step, so the
/// same command line with a seed gives the same picture.
namespace Snapshot {

/// Renders what `commandLine` asks for; returns the process's exit status.
int run(const CommandLine& commandLine);
/// Writes a PNG, creating its folders, and prints "wrote" and the path. Reports a file that cannot be written
/// on standard error. False if the image cannot be encoded (it then prints "render failed").
bool write(const Image& image, const std::string& path);

}  // namespace Snapshot

}  // namespace gull
