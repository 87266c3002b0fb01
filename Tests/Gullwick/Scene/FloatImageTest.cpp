#include "Gullwick/Scene/FloatImage.h"

#include <gtest/gtest.h>

namespace gull {
namespace {

TEST(FloatImage, PaintedInBandsIsAsLaidOneByOne) {
    constexpr int width = 64, height = 128;
    constexpr FloatImage::Pixel fill{0.9F, 0.8F, 0.7F, 1};
    std::vector<FloatImage::Disc> discs;
    for (int i = 0; i < 60; ++i) {
        FloatImage::Disc disc{.x = 11.3 * i - 40, .y = 7.7 * i - 60, .radius = 1.0 + i % 23};
        disc.colour = {0.1F * static_cast<float>(i % 10), 0.5F, 1, 1};
        disc.alpha = 0.6;
        disc.soft = i % 3 == 0;
        discs.push_back(disc);
    }
    FloatImage whole(width, height, fill);
    for (const FloatImage::Disc& disc : discs) whole.add(disc);
    EXPECT_EQ(FloatImage::painted(width, height, fill, discs), whole.image());
    EXPECT_NE(whole.image(), FloatImage(width, height, fill).image());
    EXPECT_DEATH(FloatImage::painted(width, 24, fill, discs), "64 by 24");
}

}  // namespace
}  // namespace gull
