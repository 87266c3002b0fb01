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

/// The place of a window, to restore it later: the size of its contents in points and, if the window system
/// says so, the upper left corner of its frame on the desktop, in the window system's units.
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

/// The measures that a place depends on.
struct PlaceRules {
    int width = 1240;  ///< of a first window, points
    int height = 800;
    int leastWidth = 860;
    int leastHeight = 560;
    double unitsPerPoint = 1;
    int frame = 40;  ///< points that a title bar may take
};

/// The contents' size and the frame's corner of a window to be opened, both in units. `screens` are the parts
/// of the screens that panels leave free, the first screen first; without any, the window opens as wished.
///
/// A first window is as large as wished, or smaller in the same shape so that it fits with its frame. A
/// remembered one opens at its old place if its title can still be reached there, else in the middle of the
/// first screen, and never larger than the screen.
ScreenRect placed(const std::optional<WindowPlace>& remembered, std::span<const ScreenRect> screens,
                  const PlaceRules& rules);

/// Converts a place to a line of text, "1240x800+30+40 maximised", and back; empty if the text holds no
/// place.
std::string text(const WindowPlace& place);
std::optional<WindowPlace> windowPlace(const std::string& text);

/// Window units per point if the contents are `width` x `height` units: as usual, but less in a window
/// smaller than the minimum size, so that the whole picture is visible.
double fittingUnits(int width, int height, const PlaceRules& rules);

}  // namespace gull
