#pragma once

namespace gull {

/// Whole pixels of an image, from its top left.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PixelRect&) const = default;
};

}  // namespace gull
