#pragma once

namespace gull {

/// Whether something hands out places and the keyboard to windows: on a bare X server nothing does, and a
/// window has to ask for itself. SDL's video must be up.
bool hasWindowManager();

}  // namespace gull
