#pragma once

#include "Engine/Raster/Image.h"
#include "Gullwick/Scene/Look.h"

namespace gull {

/// The sky as an equirectangular panorama of `width` by width / 2 pixels: the middle column faces out to sea,
/// the middle row is the horizon, with water and sand below it. Opaque. The same look and width give the same
/// pixels.
Image skyPanorama(const BeachLook& look, int width);

}  // namespace gull
