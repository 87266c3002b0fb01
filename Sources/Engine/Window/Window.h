#pragma once

#include "Engine/Input/Events.h"
#include "Engine/Input/Haptics.h"
#include "Engine/Raster/Image.h"
#include "Engine/Window/WindowPlace.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace gull {

/// Callbacks of a window. Each may be empty; all are called from within Window::pump.
struct WindowHandlers {
    std::function<void(const KeyEvent&)> key;
    std::function<void(const MouseEvent&)> mouse;
    /// All fingers of a trackpad that the window system itself reports (macOS), after each change.
    std::function<void(const std::vector<Contact>&)> contacts;
    std::function<void()> resized;
    std::function<void()> exposed;               ///< the content of the window was lost
    std::function<void(bool)> focusChanged;      ///< true: the window has the keyboard now
    std::function<void(bool)> minimisedChanged;  ///< true: minimised now
    /// The desktop has switched full screen on (true) or off, not the program.
    std::function<void(bool)> fullScreenChanged;
    std::function<void()> closeRequested;
    /// Every raw event of the window system, for other devices (a pointer to SDL's event).
    std::function<void(const void*)> raw;
};

/// The program's only window, with its OpenGL 3.3 core context. Sizes and positions are in points. A point is
/// `scale()` pixels; in a window smaller than the minimum size (tiling desktops make some) it is less than
/// usual, so that the window never has fewer points than that minimum. Closing, minimising and losing the
/// keyboard are reported, not acted upon.
///
/// The window opens on Wayland if the compositor has what the game needs, else on X11; SDL_VIDEODRIVER in the
/// environment overrides this.
///
/// Main thread only.
class Window final : public PointerLock {
  public:
    /// Pixels, from the top left corner.
    struct Part {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        bool operator==(const Part&) const = default;
    };
    struct Options {
        std::string title = "Gullwick";
        /// Names the desktop's menu entry of the window; empty: the program's name.
        std::string applicationId;
        Image icon;                   ///< if the desktop takes it from the window; empty: the desktop's own
        std::optional<double> scale;  ///< pixels per point; empty: the window system's scale
        std::optional<WindowPlace> place;  ///< its last place; empty: a first window
        bool isFullScreen = false;
        bool isVisible = true;  ///< false: only to find out what a window would be like
    };

    /// Throws std::runtime_error with a message for the player if there is no display, no OpenGL 3.3 or no
    /// window.
    explicit Window(const Options& options);
    ~Window() override;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    void setHandlers(WindowHandlers handlers);
    /// Handles pending events, waiting at most `timeout` seconds for the first one (0: not at all).
    void pump(double timeout);

    void makeCurrent();
    /// The framebuffer object for the current frame; ask for it every frame.
    unsigned framebuffer();
    /// Shows the frame; waits for the screen's refresh only with vsync on. `changes` is where the frame
    /// differs from the one on display. True if the whole frame is preserved for the next one to change, as
    /// software rasterisers mostly do; otherwise the next frame must be drawn whole.
    bool present(std::span<const Part> changes);
    void setVsync(bool on);

    double width() const;
    double height() const;
    double scale() const;
    int pixelWidth() const;
    int pixelHeight() const;

    /// Its place, ignoring full screen, to be passed to the next window.
    WindowPlace place() const;

    bool hasFocus() const;
    bool isMinimised() const;
    bool isFullScreen() const;
    void setFullScreen(bool on);
    void minimise();
    /// Brings the window to the front, whichever program is active.
    void raise();

    void lock() override;
    void unlock() override;

    /// "x11", "wayland", "cocoa"...; for diagnosis.
    std::string driverName() const;
    /// Why it is not on Wayland although there is one; else empty.
    std::string whyNotWayland() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
