#include "Gullwick/Scene/Textures.h"

#include "Gullwick/Scene/ItemFaces.h"
#include "Gullwick/Scene/PlankTexture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace gull {
namespace {

TEST(Textures, AreMadeOnceAndDrawnWhenLookedAt) {
    Textures textures;
    const auto foam = textures.foam();
    EXPECT_FALSE(foam->isDrawn());
    EXPECT_EQ(textures.foam(), foam);
    EXPECT_NE(textures.ring(), foam);
    EXPECT_EQ(foam->image().width, 1024);
    EXPECT_TRUE(foam->isDrawn());

    const BeachLook& look = BeachLook::forBeach(1);
    EXPECT_EQ(textures.sky(look, 512, "1"), textures.sky(BeachLook::forBeach(2), 512, "1"));
    EXPECT_NE(textures.sky(look, 512, "1"), textures.sky(look, 2048, "1"));
    EXPECT_NE(textures.sky(look, 512, "1"), textures.sky(look, 512, "icons"));
    EXPECT_EQ(textures.grainNormal(256, 5, 2, 3), textures.grainNormal(256, 5, 2, 3));
    EXPECT_NE(textures.grainNormal(256, 5, 2, 3), textures.grainNormal(256, 9, 2, 3));
}

TEST(Textures, SeasThatDifferInBlueAloneAreShared) {
    Textures textures;
    BeachLook look = BeachLook::forBeach(1);
    const auto sea = textures.waterColour(look);
    look.water.b = 0.9;
    EXPECT_EQ(textures.waterColour(look), sea);
    look.water.g += 1e-9;
    EXPECT_NE(textures.waterColour(look), sea);
}

TEST(ItemFaces, TheCoinIsStruckInOldGold) {
    const Image gold = ItemFaces::doubloonColour();
    // Rim 0.85, field 0.45, cross 0.9, background 0.35: (0.62 + 0.38 h, 0.42 + 0.42 h, 0.12 + 0.3 h).
    auto expectHeight = [&](int x, int y, double h) {
        EXPECT_NEAR(gold.at(x, y)[0], (0.62 + 0.38 * h) * 255, 1.1) << x << "," << y;
        EXPECT_NEAR(gold.at(x, y)[1], (0.42 + 0.42 * h) * 255, 1.1) << x << "," << y;
        EXPECT_NEAR(gold.at(x, y)[2], (0.12 + 0.3 * h) * 255, 1.1) << x << "," << y;
    };
    expectHeight(2, 2, 0.35);
    expectHeight(128, 18, 0.85);
    expectHeight(80, 80, 0.45);
    expectHeight(128, 128, 0.9);
    expectHeight(60, 128, 0.9);
    // The right flank of the cross faces right, the upper one up.
    const Image normals = ItemFaces::doubloonNormal();
    EXPECT_GT(normals.at(142, 102)[0], 180);
    EXPECT_GT(normals.at(100, 114)[1], 180);
    EXPECT_EQ(normals.at(128, 128)[2], 255);
}

TEST(ItemFaces, DialRoseAndLabelAreInTheirPlaces) {
    const Image dial = ItemFaces::watchDial();
    EXPECT_NEAR(dial.at(2, 2)[0], 0.97 * 255, 1);
    EXPECT_LT(dial.at(128, 14)[0], 60);        // the outer ring
    EXPECT_NEAR(dial.at(128, 128)[0], 26, 1);  // the boss
    // XII has much more ink than I; both numerals stand on their ring.
    auto ink = [&](double hour) {
        const double angle = hour * std::acos(-1.0) / 6;
        double sum = 0;
        for (int dy = -11; dy <= 11; ++dy) {
            for (int dx = -11; dx <= 11; ++dx) {
                sum += 255 - dial.at(128 + static_cast<int>(87 * std::sin(angle)) + dx,
                                     128 - static_cast<int>(87 * std::cos(angle)) + dy)[1];
            }
        }
        return sum;
    };
    EXPECT_GT(ink(12), 1.3 * ink(1));
    EXPECT_GT(ink(4), 1.2 * ink(5));  // IIII against V

    const Image rose = ItemFaces::compassRose();
    int red = 0;
    for (int y = 14; y < 40; ++y) {
        for (int x = 114; x < 142; ++x) red += rose.at(x, y)[0] > 120 && rose.at(x, y)[1] < 80 ? 1 : 0;
    }
    EXPECT_GT(red, 60);
    // The points are folded: seen from the centre the left half is dark, the right one light.
    EXPECT_NEAR(rose.at(124, 90)[0], 0.25 * 255, 1);
    EXPECT_NEAR(rose.at(132, 90)[0], 0.72 * 255, 1);
    EXPECT_NEAR(rose.at(166, 124)[0], 0.25 * 255, 1);
    EXPECT_NEAR(rose.at(166, 132)[0], 0.72 * 255, 1);

    const Image can = ItemFaces::canLabel();
    EXPECT_NEAR(can.at(256, 5)[2], 0.84 * 255, 1);
    EXPECT_NEAR(can.at(256, 250)[2], 0.84 * 255, 1);
    EXPECT_NEAR(can.at(256, 40)[0], 0.72 * 255, 1);
    // The word and the wave come twice, half way round apart.
    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; x += 3) ASSERT_NEAR(can.at(x, y)[1], can.at(x + 256, y)[1], 40);
    }
}

TEST(PlankTexture, HasDarkGapsAndTiles) {
    const Image planks = plankTexture();
    EXPECT_EQ(planks, plankTexture());
    int gaps = 0;
    bool before = false;
    for (int y = 0; y < 512; ++y) {
        double mean = 0;
        for (int x = 0; x < 512; ++x) mean += planks.at(x, y)[1] / 512.0;
        const bool dark = mean < 40;
        gaps += dark && !before ? 1 : 0;
        before = dark;
    }
    EXPECT_EQ(gaps, 5);
    EXPECT_TRUE(before);  // the last gap ends the tile
    double joint = 0, elsewhere = 0;
    for (int y = 0; y < 512; ++y) {
        joint += std::abs(planks.at(511, y)[1] - planks.at(0, y)[1]);
        elsewhere += std::abs(planks.at(200, y)[1] - planks.at(199, y)[1]);
    }
    EXPECT_LT(joint, 2 * elsewhere + 512);
}

}  // namespace
}  // namespace gull
