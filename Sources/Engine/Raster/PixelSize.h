#pragma once

namespace gull {

/// The size of a picture, whole pixels.
struct PixelSize {
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize&) const = default;
};

}  // namespace gull
