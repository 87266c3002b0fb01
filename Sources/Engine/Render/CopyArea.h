#pragma once

#include "Engine/Render/PixelArea.h"

namespace gull {

/// Copies `area` of one texture to the same place of another of its format and size, by the quickest way the
/// context has. `depth`: both are depth textures.
void copyArea(unsigned from, unsigned to, const PixelArea& area, bool depth);

}  // namespace gull
