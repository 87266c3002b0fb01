#pragma once

#include "Engine/Raster/Canvas.h"

namespace gull {

/// Signs that fonts draw unevenly or not at all, as paths. Each is fitted into `box`, centred, its own
/// proportions kept, and drawn in one colour (which may be translucent: nothing overlaps). Canvas with y
/// down.
namespace GlyphShapes {

/// Five points, slightly rounded; the box's centre is that of the star's circle.
void star(Canvas& canvas, const Rect& box, const Colour& colour);
/// The same star's outline, lying inside the filled one.
void starOutline(Canvas& canvas, const Rect& box, const Colour& colour);
/// A closed padlock: solid body with its shackle.
void padlock(Canvas& canvas, const Rect& box, const Colour& colour);
/// Three wavy lines, one above the other.
void waves(Canvas& canvas, const Rect& box, const Colour& colour);
/// A bold question mark.
void questionMark(Canvas& canvas, const Rect& box, const Colour& colour);

}  // namespace GlyphShapes

}  // namespace gull
