#pragma once

#include "Engine/Window/Window.h"

namespace gull {

/// Opens a window, its OpenGL by EGL where the X server has no GLX. From then on an X error goes into the
/// log instead of ending the program.
///
/// Throws as Window's constructor does.
Window openWindow(const Window::Options& options);

}  // namespace gull
