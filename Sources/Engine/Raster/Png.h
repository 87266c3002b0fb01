#pragma once

#include "Engine/Raster/Image.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace gull {

/// The image as the bytes of a PNG file (alpha not premultiplied); empty if it cannot be encoded.
std::optional<std::vector<std::uint8_t>> encodePng(const Image& image);
/// Reads a file written by encodePng; empty for anything that is not a readable PNG.
std::optional<Image> decodePng(const std::vector<std::uint8_t>& bytes);

}  // namespace gull
