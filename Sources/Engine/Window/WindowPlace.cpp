#include "Engine/Window/WindowPlace.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace gull {
namespace {

constexpr double reach = 60;  ///< points of a title bar that must be on a screen

int overlap(int start, int length, int otherStart, int otherLength) {
    return std::min(start + length, otherStart + otherLength) - std::max(start, otherStart);
}

struct Size {
    int width;
    int height;
};

int units(double points, const PlaceRules& rules) {
    return static_cast<int>(std::lround(points * rules.unitsPerPoint));
}

/// The screen on which the title of a window of that size at `corner` can be reached.
const ScreenRect* screenOf(const WindowPlace::Corner& corner, const Size& size,
                           std::span<const ScreenRect> screens, const PlaceRules& rules) {
    const int wanted = units(reach, rules), frame = units(rules.frame, rules);
    for (const ScreenRect& screen : screens) {
        if (overlap(corner.x, size.width, screen.x, screen.width) >= wanted &&
            overlap(corner.y, frame, screen.y, screen.height) >= frame / 2)
            return &screen;
    }
    return nullptr;
}

/// Shrinks it in its own shape until it fits the screen.
Size fitted(Size size, const ScreenRect& screen, const PlaceRules& rules) {
    const int height = screen.height - units(rules.frame, rules);
    const double share = std::min({1.0, 1.0 * screen.width / size.width, 1.0 * height / size.height});
    return {static_cast<int>(size.width * share), static_cast<int>(size.height * share)};
}

}  // namespace

ScreenRect placed(const std::optional<WindowPlace>& remembered, std::span<const ScreenRect> screens,
                  const PlaceRules& rules) {
    Size size{units(rules.width, rules), units(rules.height, rules)};
    if (remembered)
        size = {units(std::max(remembered->width, rules.leastWidth), rules),
                units(std::max(remembered->height, rules.leastHeight), rules)};
    if (screens.empty()) return {0, 0, size.width, size.height};

    const bool stood = remembered && remembered->corner;
    if (const ScreenRect* screen = stood ? screenOf(*remembered->corner, size, screens, rules) : nullptr) {
        const Size fit = fitted(size, *screen, rules);
        return {remembered->corner->x, remembered->corner->y, fit.width, fit.height};
    }
    const ScreenRect& first = screens.front();
    const Size fit = fitted(size, first, rules);
    const int frame = units(rules.frame, rules);
    return {first.x + (first.width - fit.width) / 2,
            first.y + std::max(first.height - frame - fit.height, 0) / 2, fit.width, fit.height};
}

std::string text(const WindowPlace& place) {
    std::string result = fmt::format("{}x{}", place.width, place.height);
    if (place.corner) result += fmt::format("{:+}{:+}", place.corner->x, place.corner->y);
    return result + (place.isMaximised ? " maximised" : "");
}

std::optional<WindowPlace> windowPlace(const std::string& text) {
    // Far beyond any screen, but small enough to add without overflow.
    constexpr int most = 100000;
    WindowPlace place;
    WindowPlace::Corner corner;
    const int read =
        std::sscanf(text.c_str(), "%6dx%6d%7d%7d", &place.width, &place.height, &corner.x, &corner.y);
    const auto isSane = [](int value, int least) { return value >= least && value <= most; };
    if (read < 2 || !isSane(place.width, 1) || !isSane(place.height, 1)) return std::nullopt;
    if (read == 4 && isSane(corner.x, -most) && isSane(corner.y, -most)) place.corner = corner;
    place.isMaximised = text.ends_with(" maximised");
    return place;
}

double fittingUnits(int width, int height, const PlaceRules& rules) {
    return std::min({rules.unitsPerPoint, 1.0 * std::max(width, 1) / rules.leastWidth,
                     1.0 * std::max(height, 1) / rules.leastHeight});
}

}  // namespace gull
