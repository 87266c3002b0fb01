#include "Engine/Window/WindowManager.h"

#include <SDL.h>

#include <cstring>
#include <memory>

#ifdef GULL_X11
#include <X11/Xlib.h>
#endif

namespace gull {

bool hasWindowManager() {
#ifdef GULL_X11
    const char* driver = SDL_GetCurrentVideoDriver();
    if (!driver || std::strcmp(driver, "x11") != 0) return true;
    const std::unique_ptr<Display, decltype(&XCloseDisplay)> display(XOpenDisplay(nullptr), &XCloseDisplay);
    XWindowAttributes root{};
    if (!display || !XGetWindowAttributes(display.get(), DefaultRootWindow(display.get()), &root))
        return true;
    // Only one program can redirect the requests of windows, and that one is the window manager.
    return (root.all_event_masks & SubstructureRedirectMask) != 0;
#else
    return true;
#endif
}

}  // namespace gull
