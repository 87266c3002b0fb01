#pragma once

#include <optional>

struct SDL_Window;

namespace gull {

/// Whether a window manager assigns places and the keyboard to windows. A bare X server has none, and a
/// window must ask for itself. SDL's video must be initialised.
bool hasWindowManager();

/// Whether the window manager shows the window full screen, on X11: SDL does not notice if it was asked by a
/// key of the desktop. Empty elsewhere, and where there is no window manager. A round trip to the server.
std::optional<bool> isFullScreenForManager(SDL_Window* window);

}  // namespace gull
