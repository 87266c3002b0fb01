#pragma once

namespace gull {

/// Whether a window manager assigns places and the keyboard to windows. A bare X server has none, and a
/// window must ask for itself. SDL's video must be initialised.
bool hasWindowManager();

}  // namespace gull
