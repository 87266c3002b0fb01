#pragma once

#include <optional>
#include <string>

namespace gull {

/// Window units per point on this desktop: 1 where the window system scales by itself (Wayland, macOS); on
/// X11 the resource Xft.dpi divided by 96. SDL's video must be initialised.
double desktopScale();

/// The text of Xft.dpi as a scale: dpi / 96 rounded to quarters, 1 to 4; empty if the text is not such a
/// number.
std::optional<double> scaleOfDpi(const std::string& dpi);

}  // namespace gull
