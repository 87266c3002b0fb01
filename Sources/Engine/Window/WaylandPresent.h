#pragma once

#include "Engine/Window/Window.h"

#include <memory>
#include <vector>

struct SDL_Window;

namespace gull {

/// Shows frames on a Wayland compositor as buffers in shared memory and updates only the changed parts.
/// Mesa's own path from a software rasteriser to the compositor copies whole frames and reports no parts.
///
/// Frames are drawn into a framebuffer object that keeps them. The OpenGL context must be current at every
/// call, including the destructor.
class WaylandPresent {
  public:
    /// Null if the window is not on Wayland, or if its OpenGL can present parts by itself.
    static std::unique_ptr<WaylandPresent> of(SDL_Window* window);
    ~WaylandPresent();
    WaylandPresent(const WaylandPresent&) = delete;
    WaylandPresent& operator=(const WaylandPresent&) = delete;

    /// The framebuffer object for a frame of that size in pixels; changing the size loses its contents.
    unsigned framebuffer(int width, int height);
    /// Shows `parts` of it. If the compositor has not released a buffer yet, it gets them with the next
    /// frame.
    void present(std::vector<Window::Part> parts);

  private:
    struct Impl;
    explicit WaylandPresent(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
