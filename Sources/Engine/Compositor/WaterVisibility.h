#pragma once

#include "Engine/Gl/PixelArea.h"
#include "Engine/Render/DrawList.h"
#include "Engine/Render/Viewpoint.h"

#include <glm/vec3.hpp>

namespace gull {

// What geometry alone tells of water in a picture, so that nothing is drawn, and no program compiled, for
// what nobody can see.

/// True if every ray through `area` hits the water, at any wave height, and the water lies above `highest`.
bool covers(const DrawItem& water, const Viewpoint& view, const PixelArea& area, double highest);

/// Whether level water that is seen in `area` mirrors light from `toward` (of length 1), or nearly enough for
/// waves to.
bool glitters(const Viewpoint& view, const PixelArea& area, const glm::dvec3& toward);

}  // namespace gull
