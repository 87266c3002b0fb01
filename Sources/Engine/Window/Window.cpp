#include "Engine/Window/Window.h"

#include "Engine/Window/DesktopScale.h"
#include "Engine/Window/KeyMap.h"
#include "Engine/Window/PartialPresent.h"
#include "Engine/Window/VideoChoice.h"
#include "Engine/Window/WaylandPresent.h"
#include "Engine/Window/WindowManager.h"

#include <SDL.h>
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>
#include <stdexcept>
#include <thread>
#include <utility>

namespace gull {

namespace {

constexpr Uint64 lasting = 500;  // milliseconds after which a window's place counts as settled
constexpr Uint64 between = 200;  // milliseconds between two looks at what the desktop made of the window
constexpr int looks = 5;         // in a row, after which the desktop has decided

/// Everything that a change of size or screen can change.
struct Extent {
    int pixelWidth = 0;
    int pixelHeight = 0;
    int width = 0;  // SDL's units
    int height = 0;
    bool operator==(const Extent&) const = default;
};

}  // namespace

struct Window::Impl {
    SDL_Window* window = nullptr;
    SDL_GLContext context = nullptr;
    PlaceRules rules;  ///< its unitsPerPoint: SDL's window units in a point
    VideoChoice video;
    WindowHandlers handlers;
    AltTap altTap;
    std::optional<PartialPresent> partial;
    std::unique_ptr<WaylandPresent> wayland;
    WindowPlace place;        ///< the last settled place
    WindowPlace candidate;    ///< the window's current place
    Uint64 standsSince = 0;   // milliseconds
    bool fullScreen = false;  ///< as the program wished, or the desktop decided since
    bool isFull = false;      ///< as it is
    Uint64 nextLook = 0;      // milliseconds
    int looksDiffering = 0;   ///< how often in a row it was not as wished
    Extent told;
    bool vsync = false;
    bool locked = false;
    std::map<std::int64_t, Contact> fingers;

    /// If nothing assigns the keyboard, the window takes it.
    void takeFocus() {
        if (!hasWindowManager()) SDL_SetWindowInputFocus(window);
    }
    double unitsPerPoint() const {
        int width = 0, height = 0;
        SDL_GetWindowSize(window, &width, &height);
        return fittingUnits(width, height, rules);
    }
    bool has(Uint32 flags) const { return (SDL_GetWindowFlags(window) & flags) != 0; }
    void followSize();
    void followFullScreen();
    void followPlace();
    void handle(const SDL_Event& event);
    void handleWindow(const SDL_WindowEvent& event);
    void handleFinger(const SDL_TouchFingerEvent& event, bool down);
    void handleMouse(MouseEvent::Kind kind, int x, int y, int button);
};

namespace {

[[noreturn]] void fail(const std::string& what) {
    const std::string reason = SDL_GetError();
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
    throw std::runtime_error(reason.empty() ? what : fmt::format("{} ({})", what, reason));
}

/// Without a desktop SDL falls back to dummy or console drivers. They do not count as a display unless
/// requested by name.
bool isDesktop(const char* driver) {
    if (std::getenv("SDL_VIDEODRIVER")) return true;
    for (const char* name : {"x11", "wayland", "cocoa", "windows"}) {
        if (driver && std::strcmp(driver, name) == 0) return true;
    }
    return false;
}

/// The parts of each screen that panels leave free.
std::vector<ScreenRect> freeScreens() {
    std::vector<ScreenRect> screens;
    for (int index = 0; index < SDL_GetNumVideoDisplays(); ++index) {
        SDL_Rect rect{};
        if (SDL_GetDisplayUsableBounds(index, &rect) == 0)
            screens.push_back({rect.x, rect.y, rect.w, rect.h});
    }
    return screens;
}

void askForCoreContext() {
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_CORE);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 3);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 3);
#ifdef __APPLE__
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_FLAGS, SDL_GL_CONTEXT_FORWARD_COMPATIBLE_FLAG);
#endif
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 0);
    SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 0);
}

/// SDL has no call for this. A value set by the player stays.
void setApplicationId(const std::string& id) {
    if (id.empty()) return;
    SDL_setenv("SDL_VIDEO_X11_WMCLASS", id.c_str(), 0);
    SDL_setenv("SDL_VIDEO_WAYLAND_WMCLASS", id.c_str(), 0);
}

void setIcon(SDL_Window* window, const Image& icon) {
    if (icon.empty()) return;
    std::vector<std::uint8_t> straight = icon.pixels;
    for (std::size_t i = 0; i < straight.size(); i += 4) {
        const int alpha = straight[i + 3];
        for (std::size_t c = i; c < i + 3 && alpha > 0; ++c)
            straight[c] = static_cast<std::uint8_t>(std::min(255, (straight[c] * 255 + alpha / 2) / alpha));
    }
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormatFrom(straight.data(), icon.width, icon.height, 32,
                                                              icon.width * 4, SDL_PIXELFORMAT_RGBA32);
    SDL_SetWindowIcon(window, surface);
    SDL_FreeSurface(surface);
}

}  // namespace

Window::Window(const Options& options) : impl_(std::make_unique<Impl>()) {
    SDL_SetHint(SDL_HINT_TRACKPAD_IS_TOUCH_ONLY, "1");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    impl_->video = chooseVideo();
    if (!impl_->video.drivers.empty()) SDL_SetHint(SDL_HINT_VIDEODRIVER, impl_->video.drivers.c_str());
    setApplicationId(options.applicationId);
    const bool started = SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
    if (started) SDL_ClearError();
    if (!started || !isDesktop(SDL_GetCurrentVideoDriver())) {
        fail(
            "There is no display to open a window on. Start the program in a desktop session, or use what "
            "works "
            "without one: --shot FILE, --icons FOLDER, --selftest");
    }
    askForCoreContext();
    PlaceRules& rules = impl_->rules;
    rules.unitsPerPoint = options.scale ? *options.scale : desktopScale();
    // Wayland does not say how much space panels take.
    if (driverName() == "wayland") rules.frame *= 2;
    const ScreenRect place = placed(options.place, freeScreens(), rules);
    Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI;
    if (!options.isVisible) flags |= SDL_WINDOW_HIDDEN;
    if (options.isFullScreen) flags |= SDL_WINDOW_FULLSCREEN_DESKTOP;
    if (options.place && options.place->isMaximised) flags |= SDL_WINDOW_MAXIMIZED;
    impl_->window =
        SDL_CreateWindow(options.title.c_str(), place.x, place.y, place.width, place.height, flags);
    if (!impl_->window) {
        fail(
            "A window for OpenGL cannot be opened. On Debian the drivers are in the package libgl1-mesa-dri");
    }
    setIcon(impl_->window, options.icon);
    const auto least = [&](int points) { return static_cast<int>(points * rules.unitsPerPoint); };
    // A first window may be smaller than the minimum size if the screen is.
    SDL_SetWindowMinimumSize(impl_->window, std::min(least(rules.leastWidth), place.width),
                             std::min(least(rules.leastHeight), place.height));
    impl_->fullScreen = options.isFullScreen;
    impl_->place = {static_cast<int>(std::lround(place.width / rules.unitsPerPoint)),
                    static_cast<int>(std::lround(place.height / rules.unitsPerPoint)),
                    {},
                    options.place && options.place->isMaximised};
    // Behind a full screen the window has no place of its own, so the last one stays.
    if (options.place && options.isFullScreen) impl_->place = *options.place;
    impl_->context = SDL_GL_CreateContext(impl_->window);
    if (!impl_->context) {
        SDL_DestroyWindow(impl_->window);
        fail(
            "OpenGL 3.3 is needed and was not found. Update the graphics driver, or install Mesa's software "
            "driver (on Debian the package libgl1-mesa-dri)");
    }
    impl_->partial = PartialPresent::ofCurrentContext();
    impl_->wayland = WaylandPresent::of(impl_->window);
    if (options.isVisible) impl_->takeFocus();
}

Window::~Window() {
    unlock();
    impl_->wayland.reset();
    SDL_GL_DeleteContext(impl_->context);
    SDL_DestroyWindow(impl_->window);
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

void Window::setHandlers(WindowHandlers handlers) {
    impl_->handlers = std::move(handlers);
}

void Window::pump(double timeout) {
    SDL_Event event;
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const Milliseconds wanted(std::clamp(timeout, 0.0, 10.0) * 1000);
    const auto until = std::chrono::steady_clock::now() + wanted;
    const int milliseconds = static_cast<int>(wanted.count());
    const bool came =
        (milliseconds > 0 ? SDL_WaitEventTimeout(&event, milliseconds) : SDL_PollEvent(&event)) != 0;
    if (came) impl_->handle(event);
    // SDL waits whole milliseconds; asking again and again for the rest would keep a core busy.
    if (!came && timeout > 0) std::this_thread::sleep_until(until);
    while (SDL_PollEvent(&event)) impl_->handle(event);
    impl_->followSize();
    impl_->followFullScreen();
    impl_->followPlace();
}

/// Another screen may have another scale without changing the size, and no event says so.
void Window::Impl::followSize() {
    Extent now;
    SDL_GetWindowSize(window, &now.width, &now.height);
    SDL_GL_GetDrawableSize(window, &now.pixelWidth, &now.pixelHeight);
    if (now == std::exchange(told, now)) return;
    if (handlers.resized) handlers.resized();
}

/// A desktop's own key or menu may switch full screen, too. SDL follows it on Wayland, but not on X11.
void Window::Impl::followFullScreen() {
    if (SDL_GetTicks64() < nextLook || has(SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN)) return;
    nextLook = SDL_GetTicks64() + between;
    const bool known = has(SDL_WINDOW_FULLSCREEN);
    isFull = isFullScreenForManager(window).value_or(known);
    // The desktop takes its time to do what the program asks.
    looksDiffering = isFull == fullScreen ? 0 : looksDiffering + 1;
    if (looksDiffering < looks) return;
    fullScreen = isFull;
    if (isFull != known) SDL_SetWindowFullscreen(window, isFull ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
    if (handlers.fullScreenChanged) handlers.fullScreenChanged(isFull);
}

/// Desktops report that a window is maximised only after they have enlarged it.
void Window::Impl::followPlace() {
    if (isFull || has(SDL_WINDOW_FULLSCREEN_DESKTOP | SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN)) return;
    place.isMaximised = has(SDL_WINDOW_MAXIMIZED);
    if (place.isMaximised) return;
    WindowPlace now;
    int width = 0, height = 0;
    SDL_GetWindowSize(window, &width, &height);
    now.width = static_cast<int>(std::lround(width / rules.unitsPerPoint));
    now.height = static_cast<int>(std::lround(height / rules.unitsPerPoint));
    if (const char* driver = SDL_GetCurrentVideoDriver(); !driver || std::strcmp(driver, "wayland") != 0) {
        int x = 0, y = 0, top = 0, left = 0;
        SDL_GetWindowPosition(window, &x, &y);
        SDL_GetWindowBordersSize(window, &top, &left, nullptr, nullptr);
        now.corner = WindowPlace::Corner{x - left, y - top};
    }
    if (now != std::exchange(candidate, now)) standsSince = SDL_GetTicks64();
    if (SDL_GetTicks64() - standsSince >= lasting) place = now;
}

WindowPlace Window::place() const {
    return impl_->place;
}

void Window::makeCurrent() {
    SDL_GL_MakeCurrent(impl_->window, impl_->context);
}
unsigned Window::framebuffer() {
    return impl_->wayland && !impl_->vsync ? impl_->wayland->framebuffer(pixelWidth(), pixelHeight()) : 0;
}

bool Window::present(std::span<const Part> changes) {
    if (impl_->wayland && !impl_->vsync) {
        impl_->wayland->present({changes.begin(), changes.end()});
        return true;
    }
    if (impl_->partial && !impl_->vsync &&
        impl_->partial->present({changes.begin(), changes.end()}, pixelWidth(), pixelHeight()))
        return true;
    SDL_GL_SwapWindow(impl_->window);
    return false;
}

void Window::setVsync(bool on) {
    impl_->vsync = on;
    // Try adaptive first: it shows a late frame immediately instead of at the next refresh.
    if (!on || SDL_GL_SetSwapInterval(-1) != 0) SDL_GL_SetSwapInterval(on ? 1 : 0);
}

double Window::width() const {
    int w = 0;
    SDL_GetWindowSize(impl_->window, &w, nullptr);
    return w / impl_->unitsPerPoint();
}

double Window::height() const {
    int h = 0;
    SDL_GetWindowSize(impl_->window, nullptr, &h);
    return h / impl_->unitsPerPoint();
}

double Window::scale() const {
    int units = 0;
    SDL_GetWindowSize(impl_->window, &units, nullptr);
    const double density = units > 0 ? static_cast<double>(pixelWidth()) / units : 1.0;
    return impl_->unitsPerPoint() * density;
}

int Window::pixelWidth() const {
    int w = 0;
    SDL_GL_GetDrawableSize(impl_->window, &w, nullptr);
    return w;
}

int Window::pixelHeight() const {
    int h = 0;
    SDL_GL_GetDrawableSize(impl_->window, nullptr, &h);
    return h;
}

bool Window::hasFocus() const {
    return (SDL_GetWindowFlags(impl_->window) & SDL_WINDOW_INPUT_FOCUS) != 0;
}
bool Window::isMinimised() const {
    return (SDL_GetWindowFlags(impl_->window) & SDL_WINDOW_MINIMIZED) != 0;
}

bool Window::isFullScreen() const {
    return (SDL_GetWindowFlags(impl_->window) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
}

void Window::setFullScreen(bool on) {
    impl_->fullScreen = on;
    impl_->looksDiffering = 0;
    SDL_SetWindowFullscreen(impl_->window, on ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
}

void Window::minimise() {
    SDL_MinimizeWindow(impl_->window);
}
void Window::raise() {
    SDL_RaiseWindow(impl_->window);
}

void Window::lock() {
    if (impl_->locked) return;
    impl_->locked = true;
    SDL_SetRelativeMouseMode(SDL_TRUE);
}

void Window::unlock() {
    if (!impl_->locked) return;
    impl_->locked = false;
    SDL_SetRelativeMouseMode(SDL_FALSE);
}

std::string Window::driverName() const {
    const char* name = SDL_GetCurrentVideoDriver();
    return name ? name : "none";
}

std::string Window::whyNotWayland() const {
    return driverName() == "wayland" ? std::string() : impl_->video.reason;
}

void Window::Impl::handle(const SDL_Event& event) {
    if (handlers.raw) handlers.raw(&event);
    switch (event.type) {
        case SDL_QUIT:
            if (handlers.closeRequested) handlers.closeRequested();
            break;
        case SDL_WINDOWEVENT:
            handleWindow(event.window);
            break;
        case SDL_KEYDOWN: {
            const bool isAlt = event.key.keysym.sym == SDLK_LALT;
            if (event.key.repeat == 0) altTap.pressed(isAlt);
            const auto key = keyEvent(event.key.keysym.sym, event.key.keysym.mod, event.key.repeat != 0);
            if (key && handlers.key) handlers.key(*key);
            break;
        }
        case SDL_KEYUP:
            if (altTap.released(event.key.keysym.sym == SDLK_LALT) && handlers.key) {
                KeyEvent key;
                key.key = Key::alt;
                handlers.key(key);
            }
            break;
        case SDL_MOUSEMOTION:
            handleMouse(MouseEvent::Kind::moved, event.motion.x, event.motion.y, 0);
            break;
        case SDL_MOUSEBUTTONDOWN:
            altTap.pressed(false);
            if ((SDL_GetWindowFlags(window) & SDL_WINDOW_INPUT_FOCUS) == 0) takeFocus();
            handleMouse(MouseEvent::Kind::down, event.button.x, event.button.y, event.button.button);
            break;
        case SDL_MOUSEBUTTONUP:
            handleMouse(MouseEvent::Kind::up, event.button.x, event.button.y, event.button.button);
            break;
        case SDL_FINGERDOWN:
        case SDL_FINGERMOTION:
            handleFinger(event.tfinger, true);
            break;
        case SDL_FINGERUP:
            handleFinger(event.tfinger, false);
            break;
        default:
            break;
    }
}

void Window::Impl::handleWindow(const SDL_WindowEvent& event) {
    switch (event.event) {
        case SDL_WINDOWEVENT_SIZE_CHANGED:
            followSize();
            break;
        case SDL_WINDOWEVENT_EXPOSED:
            if (handlers.exposed) handlers.exposed();
            break;
        case SDL_WINDOWEVENT_FOCUS_GAINED:
            if (handlers.focusChanged) handlers.focusChanged(true);
            break;
        case SDL_WINDOWEVENT_FOCUS_LOST:
            altTap.pressed(false);
            if (handlers.focusChanged) handlers.focusChanged(false);
            break;
        case SDL_WINDOWEVENT_MINIMIZED:
            if (handlers.minimisedChanged) handlers.minimisedChanged(true);
            break;
        case SDL_WINDOWEVENT_RESTORED:
            if (handlers.minimisedChanged) handlers.minimisedChanged(false);
            break;
        case SDL_WINDOWEVENT_LEAVE:
            handleMouse(MouseEvent::Kind::left, 0, 0, 0);
            break;
        case SDL_WINDOWEVENT_CLOSE:
            if (handlers.closeRequested) handlers.closeRequested();
            break;
        default:
            break;
    }
}

void Window::Impl::handleMouse(MouseEvent::Kind kind, int x, int y, int button) {
    if (!handlers.mouse) return;
    MouseEvent event;
    event.kind = kind;
    event.x = x / unitsPerPoint();
    event.y = y / unitsPerPoint();
    event.button = button;
    handlers.mouse(event);
}

void Window::Impl::handleFinger(const SDL_TouchFingerEvent& event, bool down) {
    // Only fingers on a trackpad: those on a touch screen point at the picture itself.
    if (SDL_GetTouchDeviceType(event.touchId) != SDL_TOUCH_DEVICE_INDIRECT_ABSOLUTE) return;
    if (down) {
        fingers[event.fingerId] = Contact{event.fingerId, event.x, 1.0 - static_cast<double>(event.y)};
    } else {
        fingers.erase(event.fingerId);
    }
    if (!handlers.contacts) return;
    std::vector<Contact> contacts;
    for (const auto& [id, contact] : fingers) contacts.push_back(contact);
    handlers.contacts(contacts);
}

}  // namespace gull
