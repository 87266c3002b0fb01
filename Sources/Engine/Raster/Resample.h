#pragma once

#include "Engine/Raster/Image.h"

namespace gull {

/// The image at another size: area-averaged when it shrinks, linearly interpolated when it grows. Stops the
/// program for a size below 1 by 1.
Image resampled(const Image& image, int width, int height);

}  // namespace gull
