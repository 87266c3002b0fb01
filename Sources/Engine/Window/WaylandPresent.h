#pragma once

#include "Engine/Window/Window.h"

#include <memory>
#include <vector>

struct SDL_Window;

namespace gull {

/// Shows frames on a Wayland compositor as buffers in shared memory, and in each only what changed: Mesa's
/// own way from a software rasteriser to the compositor copies whole frames and tells of no parts.
///
/// Frames are drawn into a framebuffer object that keeps them. The OpenGL context must be current at every
/// call, the destructor's included.
class WaylandPresent {
  public:
    /// Null where the window is not on Wayland, or its OpenGL can present parts by itself.
    static std::unique_ptr<WaylandPresent> of(SDL_Window* window);
    ~WaylandPresent();
    WaylandPresent(const WaylandPresent&) = delete;
    WaylandPresent& operator=(const WaylandPresent&) = delete;

    /// The object to draw a frame of that size into, pixels; its contents are lost with another size.
    unsigned framebuffer(int width, int height);
    /// Shows `parts` of it. A compositor that has not let go of a buffer yet gets them with the next frame.
    void present(std::vector<Window::Part> parts);

  private:
    struct Impl;
    explicit WaylandPresent(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
