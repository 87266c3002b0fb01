#pragma once

#include "Engine/Raster/Canvas.h"

#include <functional>
#include <string>

namespace gull {

/// The drawing that `draw` makes on a canvas of that size (points), as the text of an SVG file. Paths and
/// gradients stay scalable; soft shadows and images become bitmaps.
std::string drawnAsSvg(double width, double height, const std::function<void(Canvas&)>& draw);

}  // namespace gull
