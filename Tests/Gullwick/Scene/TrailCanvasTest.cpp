#include "Gullwick/Scene/TrailCanvas.h"

#include <gtest/gtest.h>

namespace gull {
namespace {

const std::uint8_t* pixel(const TrailCanvas& trail, int x, int y) {
    return trail.texture()->image().at(x, y);
}

TEST(TrailCanvas, StartsWhiteAndWhollyDirty) {
    TrailCanvas trail;
    EXPECT_TRUE(trail.dirty());
    const PixelRect all = trail.upload();
    EXPECT_EQ(all.width, 640);
    EXPECT_EQ(all.height, 400);
    EXPECT_FALSE(trail.dirty());
    EXPECT_EQ(trail.upload().width, 0);
    EXPECT_EQ(pixel(trail, 0, 0)[2], 255);
}

TEST(TrailCanvas, TheSeawardEdgeIsTheTopRow) {
    TrailCanvas trail;
    trail.upload();
    trail.sweep({0.25, 1});
    const PixelRect changed = trail.upload();
    EXPECT_EQ(changed.y, 0);
    EXPECT_LE(changed.height, 33);
    // Centre at 0.25 * 636 + 2 = 161 across and 2 below the top.
    EXPECT_NEAR(changed.x + changed.width / 2.0, 161, 1);
    EXPECT_NEAR(pixel(trail, 161, 2)[0], 0.88 * 255, 2);
    EXPECT_EQ(pixel(trail, 161, 398)[0], 255);
}

TEST(TrailCanvas, AStampFollowsItsGradient) {
    TrailCanvas trail;
    trail.sweep({0.5, 0.5});
    trail.upload();
    // Centre (320, 200). At 0.55 of the radius of 29.8125, 16.4 pixels, the second shade; white outside.
    const double share = 16.5 / 29.8125;
    const double between = (share - 0.55) / 0.45;
    EXPECT_NEAR(pixel(trail, 336, 200)[0], (0.93 + 0.07 * between) * 255, 1);
    EXPECT_NEAR(pixel(trail, 336, 200)[2], (0.88 + 0.12 * between) * 255, 1);
    EXPECT_NEAR(pixel(trail, 320, 200)[2], 0.81 * 255, 2);
    EXPECT_EQ(pixel(trail, 320 + 30, 200)[2], 255);
}

TEST(TrailCanvas, SweepingAgainDarkensNoFurtherAndNeverLightensAHole) {
    // The middle of the pixel (256, 160).
    constexpr int x = 256;
    constexpr int y = 160;
    const PlotPoint spot{(x + 0.5 - 2) / 636, (400 - y - 0.5 - 2) / 396};
    TrailCanvas trail;
    trail.sweep(spot);
    trail.upload();
    const Image once = trail.texture()->image();
    for (int i = 0; i < 5; ++i) trail.sweep(spot);
    trail.upload();
    EXPECT_EQ(trail.texture()->image(), once);

    trail.hole(spot);
    trail.upload();
    const Image holed = trail.texture()->image();
    EXPECT_NEAR(holed.at(x, y)[0], 0.88 * 0.28 * 255, 1);
    for (int dx = 0; dx < 11; ++dx) EXPECT_LT(holed.at(x + dx, y)[0], 0.88 * 255 * 0.6) << dx;
    trail.sweep(spot);
    trail.sweep({spot.x + 0.01, spot.y});
    trail.upload();
    EXPECT_EQ(trail.texture()->image().at(x, y)[0], holed.at(x, y)[0]);

    trail.reset();
    EXPECT_EQ(trail.upload().width, 640);
    EXPECT_EQ(pixel(trail, x, y)[0], 255);
}

TEST(TrailCanvas, DirtIsTheUnionOfWhatChangedAndStaysInside) {
    TrailCanvas trail;
    trail.upload();
    trail.sweep({0, 0});
    trail.hole({0.1, 0.1});
    const PixelRect changed = trail.upload();
    EXPECT_EQ(changed.x, 0);
    EXPECT_EQ(changed.y + changed.height, 400);
    EXPECT_NEAR(changed.width, 0.1 * 636 + 2 + 27.8, 1.5);
    trail.sweep({-1, 5});  // beside the plot: nothing to draw
    EXPECT_FALSE(trail.dirty());
}

}  // namespace
}  // namespace gull
