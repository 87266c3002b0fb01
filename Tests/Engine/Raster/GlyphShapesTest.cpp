#include "Engine/Raster/GlyphShapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace gull {
namespace {

TEST(GlyphShapes, FillTheirBoxWithoutLeavingItOrPaintingTwice) {
    using Draw = void (*)(Canvas&, const Rect&, const Colour&);
    const std::array<Draw, 5> shapes{GlyphShapes::star, GlyphShapes::starOutline, GlyphShapes::padlock,
                                     GlyphShapes::waves, GlyphShapes::questionMark};
    for (std::size_t shape = 0; shape < shapes.size(); ++shape) {
        Canvas canvas(120, 120);
        shapes[shape](canvas, {20, 20, 80, 80}, {1, 1, 1, 0.5});
        const Image image = canvas.image();
        int left = 120, right = 0, top = 120, bottom = 0, strongest = 0;
        for (int y = 0; y < 120; ++y) {
            for (int x = 0; x < 120; ++x) {
                const int alpha = image.at(x, y)[3];
                strongest = std::max(strongest, alpha);
                if (alpha < 32) continue;
                left = std::min(left, x);
                right = std::max(right, x + 1);
                top = std::min(top, y);
                bottom = std::max(bottom, y + 1);
            }
        }
        EXPECT_GE(left, 19) << shape;
        EXPECT_LE(right, 101) << shape;
        EXPECT_GE(top, 19) << shape;
        EXPECT_LE(bottom, 101) << shape;
        EXPECT_NEAR(left + right, 120, 3) << shape;
        EXPECT_GE(std::max(right - left, bottom - top), 74) << shape;
        EXPECT_NEAR(strongest, 128, 1) << shape;
    }
}

TEST(GlyphShapes, TheOutlinedStarIsHollow) {
    Canvas filled(40, 40);
    GlyphShapes::star(filled, {0, 0, 40, 40}, {1, 1, 1, 1});
    Canvas outlined(40, 40);
    GlyphShapes::starOutline(outlined, {0, 0, 40, 40}, {1, 1, 1, 1});
    EXPECT_EQ(filled.image().at(20, 21)[3], 255);
    EXPECT_EQ(outlined.image().at(20, 21)[3], 0);
}

}  // namespace
}  // namespace gull
