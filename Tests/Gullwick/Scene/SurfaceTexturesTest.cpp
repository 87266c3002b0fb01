#include "Gullwick/Scene/SurfaceTextures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace gull {
namespace {

/// How far the step between neighbouring columns (or rows) at the joint of two tiles lies above the mean of
/// all such steps, in standard deviations.
double seam(const Image& image, bool columns) {
    const int along = columns ? image.width : image.height;
    const int aside = columns ? image.height : image.width;
    double sum = 0, squares = 0, joint = 0;
    for (int i = 0; i < along; ++i) {
        double step = 0;
        for (int k = 0; k < aside; ++k) {
            const int next = (i + 1) % along;
            const std::uint8_t* a = columns ? image.at(i, k) : image.at(k, i);
            const std::uint8_t* b = columns ? image.at(next, k) : image.at(k, next);
            for (int c = 0; c < 4; ++c) step += std::abs(a[c] - b[c]);
        }
        sum += step;
        squares += step * step;
        joint = step;
    }
    const double mean = sum / along;
    return (joint - mean) / std::sqrt(squares / along - mean * mean);
}

TEST(SurfaceTextures, TilesMeetWithoutASeam) {
    // Steps scatter with the grains, but a given one lies beyond 3.5 deviations once in thousands of tiles.
    // A cut edge stands out by far more: the second half checks that the measure sees one.
    const Image sand = SurfaceTextures::sandDetail();
    for (const Image& image : {sand, SurfaceTextures::sandNormal(), SurfaceTextures::waterNormal()}) {
        EXPECT_LT(seam(image, true), 3.5);
        EXPECT_LT(seam(image, false), 3.5);
    }
    EXPECT_LT(seam(SurfaceTextures::foam(), true), 3.5);

    Image cut(1000, 1024);
    for (int y = 0; y < 1024; ++y) std::copy(sand.at(0, y), sand.at(0, y) + 4000, cut.at(0, y));
    EXPECT_GT(seam(cut, true), 3.5);
}

TEST(SurfaceTextures, SandIsPaleAndGrainy) {
    const Image sand = SurfaceTextures::sandDetail();
    ASSERT_EQ(sand.width, 1024);
    EXPECT_EQ(sand, SurfaceTextures::sandDetail());
    std::array<double, 3> mean{};
    double variance = 0;
    for (std::size_t i = 0; i < sand.pixels.size(); i += 4) {
        for (std::size_t c = 0; c < 3; ++c) mean[c] += sand.pixels[i + c];
        variance += std::pow(sand.pixels[i] - 237.0, 2);
    }
    const double count = 1024.0 * 1024.0;
    for (double& value : mean) value /= count;
    // 52,000 grains of about 7 square pixels cover a third of the tile; the darker half pulls the mean down.
    EXPECT_NEAR(mean[0], 231, 6);
    EXPECT_GT(mean[0], mean[1]);
    EXPECT_GT(mean[1], mean[2]);
    EXPECT_GT(std::sqrt(variance / count), 8);
}

void expectNormal(const Image& map, int x, int y, const std::array<double, 3>& expected) {
    for (std::size_t c = 0; c < 3; ++c) {
        // Heights are floats: where the exact value lies next to a whole number, either side may come out.
        const double value = map.at(x, y)[c];
        EXPECT_GT(value, expected[c] - 1.02) << x << "," << y;
        EXPECT_LT(value, expected[c] + 0.02) << x << "," << y;
    }
}

TEST(SurfaceTextures, NormalsFollowTheirFormulas) {
    // Computed in double precision by a separate program, before truncation.
    const Image sand = SurfaceTextures::sandNormal();
    expectNormal(sand, 0, 0, {106.96937, 160.53598, 248.92227});
    expectNormal(sand, 511, 511, {113.20487, 128.39350, 254.19294});
    expectNormal(sand, 100, 37, {142.56627, 127.31017, 254.10657});
    expectNormal(sand, 300, 250, {148.73095, 143.75648, 252.16444});
    expectNormal(sand, 17, 488, {97.49916, 132.96284, 251.29966});
    const Image water = SurfaceTextures::waterNormal();
    expectNormal(water, 0, 0, {173.95478, 132.36338, 246.13621});
    expectNormal(water, 511, 511, {152.68821, 145.86277, 251.13096});
    expectNormal(water, 100, 37, {129.27523, 117.14975, 254.56680});
    expectNormal(water, 300, 250, {97.41130, 110.83377, 250.27279});
    expectNormal(water, 17, 488, {133.47547, 108.78072, 253.47671});
}

TEST(SurfaceTextures, TheSeaIsClearAtTheShoreAndDeepFarOut) {
    const Image sea = SurfaceTextures::waterColour(BeachLook::forBeach(1));
    ASSERT_EQ(sea.width, 16);
    ASSERT_EQ(sea.height, 512);
    struct Row {
        int y;
        std::array<double, 4> pixel;  // premultiplied, times 255, computed by hand
    };
    const std::array<Row, 6> rows{{{0, {12.13, 74.49, 86.61, 247.33}},
                                   {255, {14.93, 91.74, 106.67, 234.98}},
                                   {400, {32.76, 97.04, 105.9, 185.42}},
                                   {440, {36.23, 78.42, 81.59, 126.7}},
                                   {470, {25.53, 55.25, 57.48, 89.25}},
                                   {511, {25.53, 55.25, 57.48, 89.25}}}};
    for (const Row& row : rows) {
        for (std::size_t c = 0; c < 4; ++c) EXPECT_NEAR(sea.at(7, row.y)[c], row.pixel[c], 0.51) << row.y;
    }
}

TEST(SurfaceTextures, RingPuffAndSparkleHaveTheirProfiles) {
    const Image ring = SurfaceTextures::ring();
    auto at = [&](double distance) { return ring.at(128 + static_cast<int>(distance), 128)[3]; };
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(at(0.71 * 126), 0);
    EXPECT_NEAR(at(0.79 * 126), 128, 8);
    EXPECT_NEAR(at(0.86 * 126), 255, 9);
    EXPECT_NEAR(at(0.93 * 126), 128, 10);
    EXPECT_EQ(at(127), 0);
    EXPECT_EQ(ring.at(128 + 108, 128)[0], ring.at(128 + 108, 128)[3]);  // white, premultiplied

    const Image puff = SurfaceTextures::puff();
    EXPECT_NEAR(puff.at(32, 32)[3], 0.9 * 255 * (1 - 0.707 / 31), 1);
    EXPECT_NEAR(puff.at(47, 32)[3], 0.9 * 255 * 0.5, 2);
    EXPECT_EQ(puff.at(0, 0)[3], 0);

    const Image sparkle = SurfaceTextures::sparkle();
    EXPECT_GT(sparkle.at(32, 32)[3], 250);
    EXPECT_NEAR(sparkle.at(31, 5)[3], 230, 1);
    EXPECT_NEAR(sparkle.at(58, 32)[3], 230, 1);
    EXPECT_EQ(sparkle.at(31, 1)[3], 0);
    EXPECT_EQ(sparkle.at(48, 48)[3], 0);
}

TEST(SurfaceTextures, FoamCrowdsTowardTheBottomEdge) {
    const Image foam = SurfaceTextures::foam();
    auto mean = [&](int y) {
        double sum = 0;
        for (int x = 0; x < foam.width; ++x) sum += foam.at(x, y)[3];
        return sum / foam.width;
    };
    EXPECT_GT(mean(127), 230);
    EXPECT_GT(mean(110), mean(90));
    EXPECT_GT(mean(90), mean(60));
    EXPECT_GT(mean(60), mean(20));
    EXPECT_LT(mean(1), 5);
}

TEST(SurfaceTextures, ChevronsPointUpAndBrightenUpward) {
    const Image arrow = SurfaceTextures::arrow();
    ASSERT_EQ(arrow.width, 128);
    ASSERT_EQ(arrow.height, 384);
    // Their points lie at y = 124, 224 and 324 above the lower edge, their feet 44 lower.
    EXPECT_NEAR(arrow.at(64, 384 - 124)[3], 0.35 * 255, 1);
    EXPECT_NEAR(arrow.at(64, 384 - 224)[3], 0.65 * 255, 1);
    EXPECT_NEAR(arrow.at(64, 384 - 324)[3], 0.95 * 255, 1);
    EXPECT_NEAR(arrow.at(20, 384 - 280)[3], 0.95 * 255, 1);
    EXPECT_EQ(arrow.at(64, 384 - 280)[3], 0);
}

}  // namespace
}  // namespace gull
