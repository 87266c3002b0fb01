#pragma once

#include <string>

namespace gull {

/// The window system, out of the desktop's, on which the window opens.
struct VideoChoice {
    std::string drivers;  ///< SDL's names in order of preference; empty: SDL's own choice
    std::string reason;   ///< why not Wayland, if the desktop has it; else empty
};

/// Chooses Wayland if its compositor supports everything that a finger's sweep needs, else X11. A picture
/// that X11 draws for a Wayland desktop is enlarged there, and blurred.
VideoChoice chooseVideo();

/// The features that the compositor named by the environment lacks, as a text for the player; empty if it has
/// everything: a pointer that can be locked, and title bars, its own or libdecor's.
std::string missingOnWayland();

}  // namespace gull
