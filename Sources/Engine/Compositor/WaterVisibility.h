#pragma once

#include "Engine/Gl/PixelArea.h"
#include "Engine/Render/DrawList.h"
#include "Engine/Render/Viewpoint.h"

#include <glm/vec3.hpp>

namespace gull {

// What geometry alone tells about water in a picture, so that nothing invisible is drawn and no program is
// compiled for it.

/// True if every ray through `area` hits the water, at any wave height, and the water lies above `highest`.
bool covers(const DrawItem& water, const Viewpoint& view, const PixelArea& area, double highest);

/// True if level water seen in `area` reflects light from `toward` (unit length), or nearly enough for waves
/// to do so.
bool glitters(const Viewpoint& view, const PixelArea& area, const glm::dvec3& toward);

}  // namespace gull
