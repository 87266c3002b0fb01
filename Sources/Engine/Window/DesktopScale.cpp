#include "Engine/Window/DesktopScale.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#ifdef GULL_X11
#include <X11/Xlib.h>
#endif

namespace gull {

double desktopScale() {
#ifdef GULL_X11
    const char* driver = SDL_GetCurrentVideoDriver();
    if (driver && std::strcmp(driver, "x11") == 0) {
        if (Display* display = XOpenDisplay(nullptr)) {
            const char* dpi = XGetDefault(display, "Xft", "dpi");
            const auto scale = dpi ? scaleOfDpi(dpi) : std::nullopt;
            XCloseDisplay(display);
            return scale.value_or(1.0);
        }
    }
#endif
    return 1.0;
}

std::optional<double> scaleOfDpi(const std::string& dpi) {
    char* end = nullptr;
    const double value = std::strtod(dpi.c_str(), &end);
    if (end == dpi.c_str() || !std::isfinite(value) || value <= 0) return std::nullopt;
    return std::clamp(std::round(value / 96.0 * 4.0) / 4.0, 1.0, 4.0);
}

}  // namespace gull
