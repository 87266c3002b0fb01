#pragma once

#include "Engine/Raster/Canvas.h"

namespace gull {

/// Small pictures drawn as paths, sized like letters of a font.
enum class Symbol { star, starFill, lockFill, waves, questionMark, checkMark, chevronRight };

/// Width and height of the box of `symbol` at a font size of `size` points.
struct SymbolSize {
    double width = 0;
    double height = 0;
};
SymbolSize symbolSize(Symbol symbol, double size);

/// Draws the symbol into `box`, which has the proportions of symbolSize().
void drawSymbol(Canvas& canvas, Symbol symbol, const Rect& box, const Colour& colour);

}  // namespace gull
