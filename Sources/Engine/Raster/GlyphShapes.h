#pragma once

#include "Engine/Raster/Canvas.h"

namespace gull {

/// Symbols that fonts draw unevenly or lack, as paths. Each is centred in `box`, keeps its proportions and is
/// drawn in one colour, which may be translucent because nothing overlaps. Canvas with y down.
namespace GlyphShapes {

/// Five points, slightly rounded; the box's centre is that of the star's circle.
void star(Canvas& canvas, const Rect& box, const Colour& colour);
/// The outline of the same star, inside the filled one.
void starOutline(Canvas& canvas, const Rect& box, const Colour& colour);
/// A closed padlock: a solid body and a shackle.
void padlock(Canvas& canvas, const Rect& box, const Colour& colour);
/// Three wavy lines, one above the other.
void waves(Canvas& canvas, const Rect& box, const Colour& colour);
/// A bold question mark.
void questionMark(Canvas& canvas, const Rect& box, const Colour& colour);

}  // namespace GlyphShapes

}  // namespace gull
