#pragma once

#include <string>

namespace gull {

/// Which of the desktop's window systems the window opens on.
struct VideoChoice {
    std::string drivers;  ///< SDL's names in order of preference; empty: SDL's own choice
    std::string reason;   ///< why not Wayland, where there is one; else empty
};

/// Wayland where its compositor has all that a finger's sweep needs, else X11: a picture that X11 draws for a
/// Wayland desktop is enlarged there, and blurred.
VideoChoice chooseVideo();

/// What the compositor that the environment names is short of, for a player to read; empty when it has all:
/// a pointer that can be locked, and title bars, its own or libdecor's.
std::string missingOnWayland();

}  // namespace gull
