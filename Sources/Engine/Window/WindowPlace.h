#pragma once

#include <optional>
#include <span>
#include <string>

namespace gull {

/// A rectangle of the desktop, in the window system's units.
struct ScreenRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const ScreenRect&) const = default;
};

/// Where a window stands or stood, to be put there again: its contents' size in points, and the upper left
/// corner of its frame on the desktop, in the window system's units, where that tells.
struct WindowPlace {
    struct Corner {
        int x = 0;
        int y = 0;
        bool operator==(const Corner&) const = default;
    };
    int width = 0;
    int height = 0;
    std::optional<Corner> corner;
    bool isMaximised = false;
    bool operator==(const WindowPlace&) const = default;
};

/// What a place is measured by.
struct PlaceRules {
    int width = 1240;  ///< of a first window, points
    int height = 800;
    int leastWidth = 860;
    int leastHeight = 560;
    double unitsPerPoint = 1;
    int frame = 40;  ///< points that a title bar may take; only windows have one, not the place of one
};

/// The contents' size and the frame's corner, both in units, of a window that is opened. `screens` are the
/// parts of the screens that panels leave free, the first one first; without any a window opens as it is
/// wished.
///
/// A first window is as large as wished, or smaller in the same shape so that it fits with its frame. A
/// remembered one opens where it stood if its title can still be reached there, else in the middle of the
/// first screen, and never larger than the screen.
ScreenRect placed(const std::optional<WindowPlace>& remembered, std::span<const ScreenRect> screens,
                  const PlaceRules& rules);

/// A place as a line of text, "1240x800+30+40 maximised", and back; nothing for a text that holds no place.
std::string text(const WindowPlace& place);
std::optional<WindowPlace> windowPlace(const std::string& text);

/// Window units a point where the contents are `width` x `height` units: as usual, but less in a window
/// smaller than the least size, so that all of the picture is seen.
double fittingUnits(int width, int height, const PlaceRules& rules);

}  // namespace gull
