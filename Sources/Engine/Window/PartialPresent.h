#pragma once

#include "Engine/Window/Window.h"

#include <optional>
#include <vector>

namespace gull {

/// Copies parts of the back buffer to the window and preserves the buffer: GLX_MESA_copy_sub_buffer.
/// The driver learns the window's size only when buffers are swapped, and copying a part outside of the size
/// it knows aborts the program. So the first frames, and those after a change of size, swap buffers.
class PartialPresent {
  public:
    /// Empty if the current OpenGL context lacks the extension.
    static std::optional<PartialPresent> ofCurrentContext();

    /// Shows `parts` of a frame of that size in pixels; false if it could not and the caller must swap
    /// buffers.
    bool present(std::vector<Window::Part> parts, int width, int height);

  private:
    /// True if the window system's size of the window equals the size of the last frame and of this one.
    bool isCertain(int width, int height);

    void* display_ = nullptr;  ///< Xlib's, SDL's own
    unsigned long drawable_ = 0;
    int width_ = 0;  ///< the previous frame's
    int height_ = 0;
    bool certain_ = false;
};

/// Merges parts, since each costs a round trip to the window system, into a few rectangles that cover all of
/// `parts` and little else.
std::vector<Window::Part> fewer(std::vector<Window::Part> parts);

}  // namespace gull
