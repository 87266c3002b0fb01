#pragma once

#include "Engine/Raster/Image.h"

#include <array>
#include <string>

namespace gull {

/// The game's own picture, for its window and the desktop's menus: the detector's coil above a gold coin, on
/// the sand at the water's edge. Drawn with paths; small sizes are drawn bolder and with fewer details.
namespace AppIcon {

/// The usual sizes of icon themes, in pixels a side.
inline constexpr std::array sizes{16, 24, 32, 48, 64, 128, 256, 512};

/// `pixels` a side.
Image image(int pixels);
/// The same as the text of an SVG file.
std::string svg();
/// The name under which the desktop knows the game, in reverse-DNS form: of its menu entry, icons and
/// windows.
std::string applicationId();
/// Writes all sizes and the scalable form below `folder`, where an icon theme has them, as in
/// `48x48/apps/ID.png`; returns the process's exit status. Reports anything that cannot be written.
int write(const std::string& folder);

}  // namespace AppIcon

}  // namespace gull
