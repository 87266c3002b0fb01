#pragma once

#include "Engine/Window/Window.h"

#include <optional>
#include <vector>

namespace gull {

/// Copies parts of what was drawn to the window, and leaves it as it is: GLX_MESA_copy_sub_buffer.
///
/// The driver learns the window's size at a swap of buffers only, and a part outside of what it takes for the
/// window stops the program. So the first frames, and those after another size, are for a swap.
class PartialPresent {
  public:
    /// Nothing where the current OpenGL context has no such way.
    static std::optional<PartialPresent> ofCurrentContext();

    /// Shows `parts` of a frame of that size, pixels; false when it did not and buffers are to be swapped.
    bool present(std::vector<Window::Part> parts, int width, int height);

  private:
    /// Whether the window system, too, has the window at the size that the last frame and this one have.
    bool isCertain(int width, int height);

    void* display_ = nullptr;  ///< Xlib's, SDL's own
    unsigned long drawable_ = 0;
    int width_ = 0;  ///< of the frame before
    int height_ = 0;
    bool certain_ = false;
};

/// Joins parts of which each costs a round trip to the window system: few rectangles that hold all of
/// `parts`, and not much more.
std::vector<Window::Part> fewer(std::vector<Window::Part> parts);

}  // namespace gull
