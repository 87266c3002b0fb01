#include "GullCore/Levels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gull {
namespace {

using testing::ElementsAre;
using enum ItemKind;

TEST(Campaign, anyNumberNamesABeach) {
    EXPECT_EQ(Campaign::beach(0).name, "Calm Cove");
    EXPECT_EQ(Campaign::beach(INT64_MIN).name, "Calm Cove");
    EXPECT_EQ(Campaign::beach(9).name, "Pirates' Landing");
    EXPECT_EQ(Campaign::beach(INT64_MAX).name, "Pirates' Landing");
    ASSERT_EQ(Campaign::beaches().size(), 8u);
    for (int n = 1; n <= 8; ++n) EXPECT_EQ(Campaign::beach(n).number, n);
}

// Sums and columns catch a slip of one cell without repeating the table.
TEST(Campaign, theTableAddsUp) {
    std::size_t treasures = 0;
    int junk = 0, worth = 0;
    std::vector<double> ranges, tides;
    std::vector<int> needs, deeps;
    for (const BeachSpec& beach : Campaign::beaches()) {
        treasures += beach.treasures.size();
        junk += beach.junk;
        for (const ItemKind kind : beach.treasures) worth += value(kind);
        ranges.push_back(beach.range);
        tides.push_back(beach.tideSeconds);
        needs.push_back(beach.need);
        deeps.push_back(beach.deep);
        EXPECT_LT(beach.need, static_cast<int>(beach.treasures.size()));
        EXPECT_EQ(beach.showsKind, beach.number <= 4);
    }
    EXPECT_EQ(treasures, 37u);
    EXPECT_EQ(junk, 43);
    EXPECT_EQ(worth, 220 + 300 + 420 + 530 + 570 + 700 + 750 + 1770);
    EXPECT_THAT(ranges, ElementsAre(0.55, 0.5, 0.46, 0.43, 0.41, 0.39, 0.37, 0.36));
    EXPECT_THAT(tides, ElementsAre(100, 100, 95, 95, 100, 100, 110, 125));
    EXPECT_THAT(needs, ElementsAre(2, 3, 3, 3, 4, 4, 5, 5));
    EXPECT_THAT(deeps, ElementsAre(0, 0, 1, 1, 2, 2, 3, 3));
    EXPECT_THAT(Campaign::beach(8).treasures, ElementsAre(chest, gem, compass, coin, ring, watch));
    EXPECT_EQ(Campaign::beach(5).tagline,
              "The old detector's screen is dead. Steady ticks are gold; double ticks are junk.");
}

}  // namespace
}  // namespace gull
