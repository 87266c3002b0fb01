#pragma once

#include "Engine/Window/Window.h"

namespace gull {

/// Opens a window; its OpenGL comes from EGL if the X server has no GLX. Afterwards an X error goes into the
/// log instead of ending the program.
///
/// Throws like Window's constructor.
Window openWindow(const Window::Options& options);

}  // namespace gull
