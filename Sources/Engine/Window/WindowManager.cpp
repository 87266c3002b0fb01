#include "Engine/Window/WindowManager.h"

#include <SDL.h>

#include <cstring>
#include <memory>

#ifdef GULL_X11
#include <SDL_syswm.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <algorithm>
#include <span>
#endif

namespace gull {

#ifdef GULL_X11
namespace {

/// Only one program can redirect the requests of windows, and that one is the window manager.
bool isManaged(Display* display) {
    XWindowAttributes root{};
    return XGetWindowAttributes(display, DefaultRootWindow(display), &root) == 0 ||
           (root.all_event_masks & SubstructureRedirectMask) != 0;
}

}  // namespace
#endif

bool hasWindowManager() {
#ifdef GULL_X11
    const char* driver = SDL_GetCurrentVideoDriver();
    if (!driver || std::strcmp(driver, "x11") != 0) return true;
    const std::unique_ptr<Display, decltype(&XCloseDisplay)> display(XOpenDisplay(nullptr), &XCloseDisplay);
    return !display || isManaged(display.get());
#else
    return true;
#endif
}

#ifdef GULL_X11
std::optional<bool> isFullScreenForManager(SDL_Window* window) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (SDL_GetWindowWMInfo(window, &info) == SDL_FALSE || info.subsystem != SDL_SYSWM_X11) return {};
    Display* const display = info.info.x11.display;
    if (!isManaged(display)) return {};
    constexpr long most = 64;  // states
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* bytes = nullptr;
    const int status =
        XGetWindowProperty(display, info.info.x11.window, XInternAtom(display, "_NET_WM_STATE", False), 0,
                           most, False, XA_ATOM, &type, &format, &count, &rest, &bytes);
    const std::unique_ptr<unsigned char, decltype(&XFree)> owned(bytes, &XFree);
    if (status != Success || type != XA_ATOM || format != 32) return {};
    const std::span<const Atom> states(static_cast<const Atom*>(static_cast<const void*>(bytes)), count);
    const Atom wanted = XInternAtom(display, "_NET_WM_STATE_FULLSCREEN", False);
    return std::ranges::find(states, wanted) != states.end();
}
#else
std::optional<bool> isFullScreenForManager(SDL_Window*) {
    return {};
}
#endif

}  // namespace gull
