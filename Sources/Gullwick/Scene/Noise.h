#pragma once

#include "Engine/Raster/Image.h"

#include <cstdint>
#include <vector>

namespace gull {

/// Square height fields that tile, and maps derived from them. A field of size N is N * N floats, row 0
/// first.
namespace Noise {

using Heights = std::vector<float>;

/// Uniform draws from `seed` | 1, row by row, smoothed `blur` times and stretched to 0..1.
Heights grainHeights(int size, std::uint64_t seed, int blur);

/// Every value becomes the mean of the nine around it.
Heights blurred(const Heights& heights, int size);

/// The slopes of the field as unit normals in tangent space, x to the right, y toward row 0; each component
/// stored as (n + 1) / 2 * 255, truncated; alpha 255.
Image normalMap(const Heights& heights, int size, double strength);

/// Brightness 0 to 1 of every pixel, by the weights of Rec. 709. The image is `size` pixels square.
Heights luminance(const Image& image, int size);

/// Fractal value noise, -1 to 1, mean near 0: `octaves` layers, the first of `cells` periods a side, each
/// next one twice as fine and half as strong. `size` is a power of two times `cells`.
Heights fractal(int size, std::uint64_t seed, int cells, int octaves);

}  // namespace Noise

}  // namespace gull
