#include "Engine/Views/Symbol.h"

#include "Engine/Raster/GlyphShapes.h"

namespace gull {

namespace {

void drawCheckMark(Canvas& canvas, const Rect& box, const Colour& colour) {
    canvas.moveTo(box.x + box.width * 0.12, box.y + box.height * 0.55);
    canvas.lineTo(box.x + box.width * 0.4, box.y + box.height * 0.82);
    canvas.lineTo(box.x + box.width * 0.9, box.y + box.height * 0.18);
    canvas.stroke(colour, box.width * 0.17, LineCap::round, LineJoin::round);
}

void drawChevron(Canvas& canvas, const Rect& box, const Colour& colour) {
    canvas.moveTo(box.x + box.width * 0.2, box.y + box.height * 0.14);
    canvas.lineTo(box.x + box.width * 0.78, box.y + box.height * 0.5);
    canvas.lineTo(box.x + box.width * 0.2, box.y + box.height * 0.86);
    canvas.stroke(colour, box.height * 0.15, LineCap::round, LineJoin::round);
}

}  // namespace

SymbolSize symbolSize(Symbol symbol, double size) {
    switch (symbol) {
        case Symbol::star:
        case Symbol::starFill:
            return {1.16 * size, 1.16 * size};
        case Symbol::lockFill:
            return {0.82 * size, 1.14 * size};
        case Symbol::waves:
            return {1.3 * size, 1.1 * size};
        case Symbol::questionMark:
            return {0.7 * size, 1.1 * size};
        case Symbol::checkMark:
            return {0.8 * size, 0.8 * size};
        case Symbol::chevronRight:
            return {0.45 * size, 0.75 * size};
    }
    return {};
}

void drawSymbol(Canvas& canvas, Symbol symbol, const Rect& box, const Colour& colour) {
    switch (symbol) {
        case Symbol::star:
            return GlyphShapes::starOutline(canvas, box, colour);
        case Symbol::starFill:
            return GlyphShapes::star(canvas, box, colour);
        case Symbol::lockFill:
            return GlyphShapes::padlock(canvas, box, colour);
        case Symbol::waves:
            return GlyphShapes::waves(canvas, box, colour);
        case Symbol::questionMark:
            return GlyphShapes::questionMark(canvas, box, colour);
        case Symbol::checkMark:
            return drawCheckMark(canvas, box, colour);
        case Symbol::chevronRight:
            return drawChevron(canvas, box, colour);
    }
}

}  // namespace gull
