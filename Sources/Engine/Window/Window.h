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
    std::function<void()> closeRequested;
    /// Every event of the window system as it came, for devices of their own (a pointer to SDL's event).
    std::function<void(const void*)> raw;
};

/// The program's one window with its OpenGL 3.3 core context. Sizes and positions are in points; a point is
/// `scale()` pixels, less than usual in a window smaller than the least size (tiling desktops have some), so
/// that it always is at least so large in points. Closing, minimising and losing the keyboard are told, not
/// acted upon.
///
/// It opens on Wayland where the compositor has what the game needs, else on X11; SDL_VIDEODRIVER in the
/// environment decides otherwise.
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
        /// By which the desktop finds the menu entry that belongs to the window; empty: the program's name.
        std::string applicationId;
        Image icon;  ///< where the desktop takes it from the window; empty: the desktop's own
        std::optional<double> scale;       ///< pixels a point; none: what the window system says
        std::optional<WindowPlace> place;  ///< where it stood last; none: a first window
        bool isFullScreen = false;
        bool isVisible = true;  ///< false: only to find out what a window would be
    };

    /// Throws std::runtime_error with a message for the player when there is no display, no OpenGL 3.3 or no
    /// window to be had.
    explicit Window(const Options& options);
    ~Window() override;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    void setHandlers(WindowHandlers handlers);
    /// Handles pending events, waiting at most `timeout` seconds for the first one (0: not at all).
    void pump(double timeout);

    void makeCurrent();
    /// The framebuffer object that a frame of the present size is drawn into; ask for every frame.
    unsigned framebuffer();
    /// Shows what was drawn; waits for the screen's refresh only with vsync on. `changes` is where it differs
    /// from what is shown. True when all that was drawn is still there for the next frame to change, which is
    /// so with software rasterisers, mostly; otherwise the next frame is to be drawn whole.
    bool present(std::span<const Part> changes);
    void setVsync(bool on);

    double width() const;
    double height() const;
    double scale() const;
    int pixelWidth() const;
    int pixelHeight() const;

    /// Where it stands, not counting full screen, to be handed to the next window.
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
    /// Why it is not on Wayland though there is one; else empty.
    std::string whyNotWayland() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
