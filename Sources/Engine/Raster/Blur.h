#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace gull {

/// A plane of coverage values, 0 to 255, rows packed without gaps.
struct AlphaPlane {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> values;  ///< width * height

    /// All 0; keeps the memory of a larger plane before it.
    void reset(int planeWidth, int planeHeight);
    std::uint8_t* row(int y) {
        return &values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)];
    }
    const std::uint8_t* row(int y) const {
        return &values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)];
    }
};

/// A gaussian blur in all but name: three box blurs one after another, whose widths add up to the variance
/// asked for. What lies outside the plane counts as 0, so leave blurReach(sigma) pixels around the shape.
void blur(AlphaPlane& plane, double sigma);

/// How many pixels beyond a shape its blur of this standard deviation (pixels) can be seen.
int blurReach(double sigma);

}  // namespace gull
