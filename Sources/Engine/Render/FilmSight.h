#pragma once

#include "Engine/Render/DrawList.h"
#include "Engine/Render/PixelArea.h"
#include "Engine/Render/Viewpoint.h"

#include <glm/vec3.hpp>

namespace gull {

// What geometry alone tells of a wide sheet of liquid in a picture, so that nothing is drawn, and no program
// compiled, for what nobody can see.

/// Whether every ray through `area` meets the sheet that `film` is, as high or low as its waves may be, and
/// that lies above `highest`.
bool covers(const DrawItem& film, const Viewpoint& view, const PixelArea& area, double highest);

/// Whether level water that is seen in `area` mirrors light from `toward` (of length 1), or nearly enough for
/// waves to.
bool glitters(const Viewpoint& view, const PixelArea& area, const glm::dvec3& toward);

}  // namespace gull
