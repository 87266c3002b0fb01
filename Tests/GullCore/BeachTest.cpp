#include "GullCore/Beach.h"

#include <gtest/gtest.h>
#include <cmath>
#include <iterator>
#include <limits>

namespace gull {
namespace {

TEST(PlotPoint, distanceMakesThePlotWiderThanDeep) {
    EXPECT_EQ((PlotPoint{0, 0}.distance({1, 0})), 1.6);
    EXPECT_EQ((PlotPoint{0, 0}.distance({0, 1})), 1);
    const PlotPoint a{0.25, 0.125};
    const PlotPoint b{0.5, 0.425};
    EXPECT_DOUBLE_EQ(a.distance(b), 0.5);
    EXPECT_EQ(a.distance(b), b.distance(a));
}

TEST(PlotPoint, clampingPinsEachCoordinateByItself) {
    EXPECT_EQ((PlotPoint{-0.2, 1.3}.clamped()), (PlotPoint{0, 1}));
    EXPECT_EQ((PlotPoint{0.3, 1}.clamped()), (PlotPoint{0.3, 1}));
    EXPECT_FALSE(std::signbit(PlotPoint{-0.0, 0}.clamped().x));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(PlotPoint{nan, 2}.clamped().x));
}

TEST(PadMap, innerPadSpansThePlotAndTheBandPinsToItsEdge) {
    const PlotPoint corner = PadMap::plotPoint(0.05, 0.95);
    EXPECT_EQ(corner.x, 0);
    EXPECT_NEAR(corner.y, 1, 1e-12);
    EXPECT_NEAR(PadMap::plotPoint(0.5, 0.5).x, 0.5, 1e-12);
    EXPECT_EQ(PadMap::plotPoint(0, 1), (PlotPoint{0, 1}));
    EXPECT_EQ(PadMap::plotPoint(0.951, 0.049), (PlotPoint{1, 0}));
}

TEST(PadMap, aimingThroughTheInverseComesBack) {
    for (double v = 0; v <= 1; v += 0.01) {
        const double pad = 0.05 + 0.9 * v;
        const PlotPoint point = PadMap::plotPoint(pad, 1 - pad);
        EXPECT_NEAR(point.x, v, 1e-12);
        EXPECT_NEAR(point.y, 1 - v, 1e-12);
    }
}

TEST(ItemKind, textKeysNamesAndWorths) {
    struct Row {
        const char* key;
        const char* name;
        int value;
        bool isTreasure;
    };
    const Row rows[] = {
        {"coin", "Gold doubloon", 50, true},     {"ring", "Signet ring", 120, true},
        {"watch", "Pocket watch", 200, true},    {"key", "Iron key", 80, true},
        {"gem", "Emerald", 250, true},           {"compass", "Brass compass", 150, true},
        {"chest", "Treasure chest", 1000, true}, {"cap", "Bottle cap", 0, false},
        {"can", "Soda can", 0, false},           {"nail", "Rusty nail", 0, false},
        {"foil", "Foil wrapper", 0, false},
    };
    ASSERT_EQ(std::size(rows), allKinds().size());
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const ItemKind kind = allKinds()[i];
        EXPECT_EQ(rawValue(kind), rows[i].key);
        EXPECT_EQ(itemKind(rows[i].key), kind);
        EXPECT_EQ(name(kind), rows[i].name);
        EXPECT_EQ(value(kind), rows[i].value);
        EXPECT_EQ(isTreasure(kind), rows[i].isTreasure);
    }
    EXPECT_EQ(itemKind("Coin"), std::nullopt);
    EXPECT_EQ(itemKind(""), std::nullopt);
    EXPECT_EQ(itemKind("coins"), std::nullopt);
}

TEST(BuriedItem, isTheSameOnlyWithAllFieldsEqual) {
    const BuriedItem item{3, ItemKind::ring, {0.4, 0.6}, 0.1};
    BuriedItem deeper = item;
    EXPECT_EQ(item, deeper);
    deeper.depth = 0.2;
    EXPECT_NE(item, deeper);
}

}  // namespace
}  // namespace gull
