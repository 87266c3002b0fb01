#pragma once

#include <optional>
#include <string>

namespace gull {

/// Window units a point on this desktop: 1 where the window system scales by itself (Wayland, macOS); on X11
/// the resource Xft.dpi over 96. SDL's video must be up.
double desktopScale();

/// Xft.dpi's text as a scale: dpi / 96 rounded to quarters, 1 to 4; nothing for a text that is no such
/// number.
std::optional<double> scaleOfDpi(const std::string& dpi);

}  // namespace gull
