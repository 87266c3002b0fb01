#include "Engine/Window/WindowOpening.h"

#include "Engine/Log/Log.h"

#include <SDL.h>

#ifdef GULL_X11
#include <X11/Xlib.h>
#endif

namespace gull {

namespace {

#ifdef GULL_X11

/// Without this handler, Xlib prints the error in its own words and ends the program, for instance when SDL
/// asks a driver for a context that does not exist. The call that failed reports it anyway.
int noteError(Display*, XErrorEvent* error) {
    constexpr int most = 20;
    static int count = 0;
    if (++count <= most)
        Log::note("X error {} from request {}.{}", error->error_code, error->request_code, error->minor_code);
    return 0;
}

/// Xlib ends the program when this function returns.
int sayGone(Display*) {
    Log::say("the display is gone, so the game ends");
    return 0;
}

/// SDL cannot try EGL after GLX has failed, so the server is asked first.
void prepare() {
    XSetErrorHandler(noteError);
    XSetIOErrorHandler(sayGone);
    Display* const display = XOpenDisplay(nullptr);
    if (!display) return;
    int opcode = 0, event = 0, error = 0;
    if (!XQueryExtension(display, "GLX", &opcode, &event, &error)) {
        Log::note("the X server has no GLX, so the window's OpenGL comes from EGL");
        SDL_SetHint(SDL_HINT_VIDEO_X11_FORCE_EGL, "1");
    }
    XCloseDisplay(display);
}

#else

void prepare() {}

#endif

}  // namespace

Window openWindow(const Window::Options& options) {
    prepare();
    return Window(options);
}

}  // namespace gull
