#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace gull {

/// 8 bits per channel, R G B A in memory, premultiplied alpha, sRGB unless its creator says otherwise; row 0
/// is the top of the picture. A plain value.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;  ///< width * height * 4

    Image() = default;
    /// Transparent black. Stops the program for a negative size.
    Image(int imageWidth, int imageHeight);

    bool empty() const { return width == 0 || height == 0; }
    std::uint8_t* at(int x, int y) {
        return &pixels[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                        static_cast<std::size_t>(x)) *
                       4];
    }
    const std::uint8_t* at(int x, int y) const {
        return &pixels[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                        static_cast<std::size_t>(x)) *
                       4];
    }
    bool operator==(const Image&) const = default;
};

}  // namespace gull
