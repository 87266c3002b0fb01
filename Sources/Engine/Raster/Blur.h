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

    /// Sets every value to 0; reuses the memory of a larger earlier plane.
    void reset(int planeWidth, int planeHeight);
    std::uint8_t* row(int y) {
        return &values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)];
    }
    const std::uint8_t* row(int y) const {
        return &values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)];
    }
};

/// Approximates a gaussian blur with three successive box blurs whose widths add up to the requested
/// variance. Values outside the plane count as 0, so leave blurReach(sigma) pixels around the shape.
void blur(AlphaPlane& plane, double sigma);

/// How many pixels a blur of this standard deviation (pixels) visibly extends beyond the shape.
int blurReach(double sigma);

}  // namespace gull
