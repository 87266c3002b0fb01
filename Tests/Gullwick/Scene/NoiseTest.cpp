#include "Gullwick/Scene/Noise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace gull {
namespace {

// The numbers below were computed in double precision by a separate program.

void expectHeights(const Noise::Heights& heights, const std::vector<double>& first, double last, double sum) {
    for (std::size_t i = 0; i < first.size(); ++i) {
        EXPECT_NEAR(static_cast<double>(heights[i]), first[i], 2e-6) << i;
    }
    EXPECT_NEAR(static_cast<double>(heights.back()), last, 2e-6);
    const double total = std::accumulate(heights.begin(), heights.end(), 0.0);
    EXPECT_NEAR(total, sum, 2e-6 * static_cast<double>(heights.size()) + 1e-5);
}

TEST(Noise, GrainHeightsAreTheGeneratorsSmoothedAndStretched) {
    // An even seed is made odd.
    EXPECT_EQ(Noise::grainHeights(4, 6, 0), Noise::grainHeights(4, 7, 0));
    expectHeights(Noise::grainHeights(4, 6, 0), {0.689961, 0.0, 0.7179379, 0.7237828, 0.5619553, 0.1535798},
                  0.9716244, 9.56269);
    expectHeights(Noise::grainHeights(8, 17, 1),
                  {0.2398996, 0.2665515, 0.7498214, 0.4641115, 0.2061931, 0.0672283}, 0.6547339, 25.64105);
    expectHeights(Noise::grainHeights(16, 71, 6),
                  {0.2073276, 0.1533566, 0.2715704, 0.5758925, 0.8017921, 0.7114204}, 0.3200907, 131.64856);
}

TEST(Noise, NormalsLeanAwayFromTheSlopeAndWrap) {
    // One bump at (1, 1) of a field of 4 with strength 2: its left neighbour's normal is (-2, 0, 1) / sqrt 5.
    Noise::Heights heights(16, 0.0F);
    heights[1 * 4 + 1] = 1;
    const Image map = Noise::normalMap(heights, 4, 2);
    auto pixel = [&](int x, int y) { return std::vector<int>(map.at(x, y), map.at(x, y) + 4); };
    EXPECT_EQ(pixel(0, 1), (std::vector<int>{13, 127, 184, 255}));
    EXPECT_EQ(pixel(2, 1), (std::vector<int>{241, 127, 184, 255}));
    // Row 0 is the top and y points up: above the bump the surface leans up.
    EXPECT_EQ(pixel(1, 0), (std::vector<int>{127, 241, 184, 255}));
    EXPECT_EQ(pixel(1, 2), (std::vector<int>{127, 13, 184, 255}));
    EXPECT_EQ(pixel(3, 3), (std::vector<int>{127, 127, 255, 255}));

    Noise::Heights corner(16, 0.0F);
    corner[0] = 1;
    EXPECT_EQ(Noise::normalMap(corner, 4, 2).at(3, 0)[0], 13);
    EXPECT_EQ(Noise::normalMap(corner, 4, 2).at(0, 3)[1], 241);
}

TEST(Noise, BlurAveragesNineWithWrapAround) {
    Noise::Heights heights(16, 0.0F);
    heights[0] = 9;
    const Noise::Heights soft = Noise::blurred(heights, 4);
    for (const int i : {0, 1, 3, 4, 5, 7, 12, 13, 15}) EXPECT_FLOAT_EQ(soft[static_cast<std::size_t>(i)], 1);
    EXPECT_FLOAT_EQ(std::accumulate(soft.begin(), soft.end(), 0.0F), 9);
}

TEST(Noise, LuminanceIsTheGreyItself) {
    Image image(2, 2);
    std::fill(image.at(0, 0), image.at(0, 0) + 4, std::uint8_t{255});
    std::fill(image.at(1, 0), image.at(1, 0) + 3, std::uint8_t{51});
    const Noise::Heights values = Noise::luminance(image, 2);
    EXPECT_NEAR(values[0], 1, 1e-6);
    EXPECT_NEAR(values[1], 0.2, 1e-6);
    EXPECT_EQ(values[2], 0);
}

TEST(Noise, FractalTilesWithoutAStep) {
    constexpr int size = 128;
    const Noise::Heights field = Noise::fractal(size, 3, 4, 4);
    float seam = 0, inside = 0, largest = 0;
    for (std::size_t y = 0; y < size; ++y) {
        for (std::size_t x = 0; x < size; ++x) {
            const float step = std::abs(field[y * size + x] - field[y * size + (x + 1) % size]);
            float& worst = x + 1 == size ? seam : inside;
            worst = std::max(worst, step);
            largest = std::max(largest, std::abs(field[y * size + x]));
        }
    }
    EXPECT_LE(seam, inside);
    EXPECT_LE(largest, 1);
    EXPECT_GT(largest, 0.3F);
}

TEST(NoiseDeathTest, RefusesFieldsOfTheWrongSize) {
    EXPECT_DEATH(Noise::normalMap(Noise::Heights(15), 4, 1), "15 values for a field of size 4");
    EXPECT_DEATH(Noise::fractal(100, 1, 8, 3), "size 100");
}

}  // namespace
}  // namespace gull
