#pragma once

#include "Engine/Raster/Image.h"

namespace gull {

/// 512 x 512 pixels, opaque, sRGB, tiles both ways: five weathered boards lying across, with grain, knots,
/// joints and nails, and dark gaps between them. The same every time.
Image plankTexture();

}  // namespace gull
