#pragma once

#include "Engine/Raster/PixelSize.h"

#include <algorithm>
#include <vector>

namespace gull {

/// A rectangle of a framebuffer. As in OpenGL, the origin is the lower left corner.
struct PixelArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    static PixelArea whole(const PixelSize& size) { return {0, 0, size.width, size.height}; }
    bool empty() const { return width <= 0 || height <= 0; }
    int right() const { return x + width; }
    int top() const { return y + height; }

    PixelArea intersection(const PixelArea& other) const {
        int left = std::max(x, other.x), bottom = std::max(y, other.y);
        return {left, bottom, std::max(0, std::min(right(), other.right()) - left),
                std::max(0, std::min(top(), other.top()) - bottom)};
    }
    /// The smallest area that holds both; an empty one adds nothing.
    PixelArea united(const PixelArea& other) const {
        if (empty()) return other;
        if (other.empty()) return *this;
        int left = std::min(x, other.x), bottom = std::min(y, other.y);
        return {left, bottom, std::max(right(), other.right()) - left, std::max(top(), other.top()) - bottom};
    }
    PixelArea grown(int pixels) const {
        return empty() ? *this : PixelArea{x - pixels, y - pixels, width + 2 * pixels, height + 2 * pixels};
    }
    PixelArea moved(int right, int up) const { return {x + right, y + up, width, height}; }
    bool operator==(const PixelArea&) const = default;
};

/// Appends `area`, or widens the last of `areas` by it if the two are neighbours in a row. Both must have the
/// same height.
inline void addBeside(std::vector<PixelArea>& areas, const PixelArea& area) {
    if (!areas.empty() && areas.back().y == area.y && areas.back().right() == area.x)
        areas.back().width += area.width;
    else
        areas.push_back(area);
}

}  // namespace gull
