#pragma once

#include "Engine/Raster/Image.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace gull {

/// The image as the bytes of a PNG file (alpha not premultiplied); nothing when it cannot be encoded.
std::optional<std::vector<std::uint8_t>> encodePng(const Image& image);
/// Reads back what encodePng wrote; nothing for anything that is not a readable PNG.
std::optional<Image> decodePng(const std::vector<std::uint8_t>& bytes);

}  // namespace gull
