#pragma once

#include "Engine/Gl/PixelArea.h"
#include "Engine/Raster/PixelSize.h"

namespace gull {

// The coarse pixels in which the water and the light of moving things are computed, because both are soft:
// two pixels a side, and more on large screens, whose pixels are small.

inline int coarsePixel(const PixelSize& size) {
    const double millions = 1e-6 * size.width * size.height;
    return millions > 6 ? 4 : millions > 3 ? 3 : 2;
}

/// The size in coarse pixels of a picture of that size; the last ones may reach beyond it.
inline PixelSize coarse(const PixelSize& size) {
    const int side = coarsePixel(size);
    return {(size.width + side - 1) / side, (size.height + side - 1) / side};
}

/// An area of such a picture in coarse pixels, and one more all round, which filtering at full resolution
/// reads.
inline PixelArea coarse(const PixelArea& area, const PixelSize& size) {
    const PixelSize goal = coarse(size);
    const auto below = [](int value, int to, int from) { return value * to / from; };
    const auto above = [](int value, int to, int from) { return (value * to + from - 1) / from; };
    const int left = below(area.x, goal.width, size.width),
              right = above(area.right(), goal.width, size.width);
    const int low = below(area.y, goal.height, size.height),
              high = above(area.top(), goal.height, size.height);
    return PixelArea{left, low, right - left, high - low}.grown(1);
}

}  // namespace gull
