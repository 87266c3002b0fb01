#include "Engine/Window/PartialPresent.h"

#include <algorithm>
#include <utility>

#ifdef GULL_X11
#include <epoxy/glx.h>
#endif

namespace gull {

namespace {

/// Roughly the number of pixels copied in the time of one round trip.
constexpr int roundTrip = 60000;

int pixels(const Window::Part& part) {
    return part.width * part.height;
}

Window::Part united(const Window::Part& a, const Window::Part& b) {
    const int left = std::min(a.x, b.x), top = std::min(a.y, b.y);
    return {left, top, std::max(a.x + a.width, b.x + b.width) - left,
            std::max(a.y + a.height, b.y + b.height) - top};
}

}  // namespace

std::vector<Window::Part> fewer(std::vector<Window::Part> parts) {
    // Merges the cheapest pair as long as that saves time.
    while (parts.size() > 1) {
        int least = roundTrip;
        std::pair<std::size_t, std::size_t> best;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            for (std::size_t j = i + 1; j < parts.size(); ++j) {
                const int more = pixels(united(parts[i], parts[j])) - pixels(parts[i]) - pixels(parts[j]);
                if (more >= least) continue;
                least = more;
                best = {i, j};
            }
        }
        if (least == roundTrip) break;
        parts[best.first] = united(parts[best.first], parts[best.second]);
        parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(best.second));
    }
    return parts;
}

#ifdef GULL_X11

std::optional<PartialPresent> PartialPresent::ofCurrentContext() {
    PartialPresent partial;
    // If the context is not a GLX one (Wayland), neither is its display.
    Display* display = glXGetCurrentDisplay();
    if (!display || !epoxy_has_glx_extension(display, DefaultScreen(display), "GLX_MESA_copy_sub_buffer"))
        return std::nullopt;
    partial.display_ = display;
    partial.drawable_ = glXGetCurrentDrawable();
    return partial;
}

bool PartialPresent::isCertain(int width, int height) {
    const bool same = width == width_ && height == height_;
    width_ = width;
    height_ = height;
    if (!same) return certain_ = false;
    if (certain_) return true;
    ::Window root = 0;
    int x = 0, y = 0;
    unsigned actualWidth = 0, actualHeight = 0, border = 0, depth = 0;
    certain_ = XGetGeometry(static_cast<Display*>(display_), drawable_, &root, &x, &y, &actualWidth,
                            &actualHeight, &border, &depth) != 0 &&
               static_cast<int>(actualWidth) == width && static_cast<int>(actualHeight) == height;
    return certain_;
}

bool PartialPresent::present(std::vector<Window::Part> parts, int width, int height) {
    if (!isCertain(width, height)) return false;
    for (const Window::Part& part : fewer(std::move(parts)))
        glXCopySubBufferMESA(static_cast<Display*>(display_), drawable_, part.x,
                             height - part.y - part.height, part.width, part.height);
    return true;
}

#else

std::optional<PartialPresent> PartialPresent::ofCurrentContext() {
    return std::nullopt;
}
bool PartialPresent::present(std::vector<Window::Part>, int, int) {
    return false;
}

#endif

}  // namespace gull
