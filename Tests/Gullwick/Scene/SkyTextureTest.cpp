#include "Gullwick/Scene/SkyTexture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace gull {
namespace {

TEST(SkyTexture, GradientRunsThroughItsStops) {
    // Noon, at the edge column: far from the sun's halo; rows above or below every cloud. The values are
    // those of the gradient by hand, times 255; dithering moves a pixel by less than a step, a row's mean
    // not.
    const Image sky = skyPanorama(BeachLook::forBeach(2), 512);
    ASSERT_EQ(sky.width, 512);
    ASSERT_EQ(sky.height, 256);
    struct Row {
        int y;
        std::array<double, 3> colour;
    };
    const std::array<Row, 6> rows{{{0, {40.89, 96.09, 184.01}},
                                   {30, {46.32, 108.86, 208.46}},
                                   {130, {182.56, 214.88, 226.31}},
                                   {148, {87.28, 156.2, 171.68}},
                                   {200, {95.31, 126.75, 126.97}},
                                   {255, {103.81, 95.6, 79.68}}}};
    for (const Row& row : rows) {
        for (std::size_t c = 0; c < 3; ++c) {
            double mean = 0;
            for (int x = 0; x < 128; ++x) {
                const double value = sky.at(x, row.y)[c];
                EXPECT_LT(std::abs(value - row.colour[c]), 1.02) << "row " << row.y;
                mean += value / 128;
            }
            EXPECT_NEAR(mean, row.colour[c], 0.2) << "row " << row.y << " channel " << c;
        }
        EXPECT_EQ(sky.at(5, row.y)[3], 255);
    }
}

TEST(SkyTexture, TheSunStandsWhereItsAnglesSay) {
    // Clear of clouds, so that nothing covers it: azimuth 22 of 360 right of the middle, 52 of 90 up.
    BeachLook look = BeachLook::forBeach(2);
    const Image sky = skyPanorama(look, 1024);
    const int x = static_cast<int>((22.0 / 360 + 0.5) * 1024);
    const int y = static_cast<int>(256 - 52.0 / 90 * 256);
    for (int c = 0; c < 3; ++c) EXPECT_EQ(sky.at(x, y)[c], 255);
    // 0.014 of the height is 7 pixels: white inside, less so outside.
    EXPECT_EQ(sky.at(x + 5, y)[0], 255);
    EXPECT_LT(sky.at(x + 12, y)[0], 255);
    EXPECT_GT(sky.at(x + 60, y)[0], sky.at(x + 260, y)[0] + 20);  // within the halo, outside it
}

TEST(SkyTexture, CloudsBelongToTheirBeachAndGoRound) {
    BeachLook look = BeachLook::forBeach(3);
    const Image sky = skyPanorama(look, 512);
    EXPECT_EQ(sky, skyPanorama(look, 512));
    look.sunAzimuth = 43;
    EXPECT_FALSE(sky == skyPanorama(look, 512));

    // No seam behind the player: across the edge neighbours differ no more than elsewhere.
    const Image overcast = skyPanorama(BeachLook::forBeach(7), 512);
    int seam = 0, inside = 0;
    for (int y = 0; y < 128; ++y) {
        seam = std::max(seam, std::abs(overcast.at(0, y)[0] - overcast.at(511, y)[0]));
        for (int x = 1; x < 512; ++x) {
            inside = std::max(inside, std::abs(overcast.at(x, y)[0] - overcast.at(x - 1, y)[0]));
        }
    }
    EXPECT_LE(seam, inside);
}

TEST(SkyTexture, TheSmallPanoramaIsTheLargeOneSeenFromAfar) {
    // Clouds of the large one are drawn at half size: both must show the same sky.
    const BeachLook& look = BeachLook::forBeach(5);
    const Image large = skyPanorama(look, 2048);
    const Image small = skyPanorama(look, 512);
    double difference = 0;
    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 512; ++x) {
            double mean = 0;
            for (int k = 0; k < 16; ++k) mean += large.at(4 * x + k % 4, 4 * y + k / 4)[0] / 16.0;
            difference += std::abs(mean - small.at(x, y)[0]);
        }
    }
    EXPECT_LT(difference / (512 * 256), 1.5);
}

TEST(SkyTextureDeathTest, RefusesOddWidths) {
    EXPECT_DEATH(skyPanorama(BeachLook::forBeach(1), 511), "width 511");
}

}  // namespace
}  // namespace gull
