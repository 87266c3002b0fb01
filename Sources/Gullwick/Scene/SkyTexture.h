#pragma once

#include "Engine/Raster/Image.h"
#include "Gullwick/Scene/Look.h"

namespace gull {

/// The sky all round as an equirectangular panorama of `width` by width / 2 pixels: the middle column looks
/// out to sea, the middle row is the horizon, below it lie water and sand. Opaque. The same look and width
/// give the same pixels.
Image skyPanorama(const BeachLook& look, int width);

}  // namespace gull
