#pragma once

#include "Engine/Raster/Canvas.h"

#include <functional>
#include <string>

namespace gull {

/// What `draw` draws on a canvas of that size, in points, as the text of an SVG file: paths and gradients
/// stay what they are at any size; soft shadows and images become bitmaps.
std::string drawnAsSvg(double width, double height, const std::function<void(Canvas&)>& draw);

}  // namespace gull
