#include "GullCore/Hunt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gull {
namespace {

using testing::ElementsAre;
using testing::VariantWith;
using enum ItemKind;

const BuriedItem coinNear{0, coin, {0.25, 0.5}, 0.1};
const BuriedItem ringFar{1, ring, {0.75, 0.5}, 0.2};
const BuriedItem capBeside{2, cap, {0.25, 0.5625}, 0};

/// Two treasures, one of them with junk beside it; 20 seconds of tide, one treasure to pass.
class HuntTest : public testing::Test {
  protected:
    static BeachSpec spec() {
        return {.treasures = {coin, ring}, .junk = 1, .range = 0.5, .tideSeconds = 20, .need = 1};
    }
    Hunt hunt{spec(), {coinNear, ringFar, capBeside}};
};

TEST_F(HuntTest, aDigTakesTheNearestAndEveryDigLeavesAHole) {
    const PlotPoint between{0.25, 0.5};
    EXPECT_THAT(hunt.dig(between), VariantWith<Hunt::Treasure>(Hunt::Treasure{coinNear}));
    EXPECT_THAT(hunt.dig(between), VariantWith<Hunt::Junk>(Hunt::Junk{capBeside}));
    EXPECT_THAT(hunt.dig(between), VariantWith<Hunt::Nothing>(Hunt::Nothing{}));
    EXPECT_THAT(hunt.holes(), ElementsAre(between, between, between));
    EXPECT_THAT(hunt.found(), ElementsAre(coinNear));
    EXPECT_THAT(hunt.junkDug(), ElementsAre(capBeside));
    EXPECT_THAT(hunt.buried(), ElementsAre(ringFar));
    EXPECT_EQ(hunt.items().size(), 3u);
    EXPECT_EQ(hunt.haul(), 50);
    EXPECT_EQ(hunt.elapsed(), 0) << "digging costs no tide";
    EXPECT_EQ(hunt.stars(), 1);
    EXPECT_FALSE(hunt.isOver()) << "a pass is not the end";
}

TEST_F(HuntTest, whatIsDugGivesNoSignal) {
    const PlotPoint at = coinNear.at;
    EXPECT_EQ(hunt.reading(at).item, coinNear);
    hunt.dig(at);
    EXPECT_EQ(hunt.reading(at).item, capBeside);
}

TEST_F(HuntTest, theTideStopsAtItsEnd) {
    hunt.advance(-1);
    EXPECT_EQ(hunt.elapsed(), 0);
    hunt.advance(5);
    EXPECT_EQ(hunt.timeLeft(), 15);
    EXPECT_EQ(hunt.tideProgress(), 0.25);
    hunt.advance(1000);
    EXPECT_EQ(hunt.elapsed(), 20);
    EXPECT_EQ(hunt.timeLeft(), 0);
    EXPECT_EQ(hunt.tideProgress(), 1);
    EXPECT_TRUE(hunt.isTideIn() && hunt.isOver());
    EXPECT_THAT(hunt.dig(coinNear.at), VariantWith<Hunt::Nothing>(Hunt::Nothing{}));
    EXPECT_TRUE(hunt.holes().empty());
    EXPECT_FALSE(hunt.ping(coinNear.at));
    EXPECT_EQ(hunt.pings(), 0);
}

TEST_F(HuntTest, theLastTreasureStopsTheClock) {
    hunt.advance(3);
    hunt.dig(ringFar.at);
    hunt.dig(coinNear.at);
    EXPECT_TRUE(hunt.isAllFound() && hunt.isOver());
    EXPECT_FALSE(hunt.isTideIn());
    hunt.advance(100);
    EXPECT_EQ(hunt.elapsed(), 3);
    EXPECT_THAT(hunt.dig(capBeside.at), VariantWith<Hunt::Nothing>(Hunt::Nothing{}));
    EXPECT_EQ(hunt.holes().size(), 2u);
    EXPECT_THAT(hunt.found(), ElementsAre(ringFar, coinNear)) << "in the order dug";
    EXPECT_EQ(hunt.stars(), 3);
}

TEST_F(HuntTest, aPingPointsToTheNearestTreasureForFiveSeconds) {
    EXPECT_EQ(hunt.ping(capBeside.at), coinNear) << "junk is never pointed to";
    EXPECT_EQ(hunt.ping({0.5, 0.5}), coinNear) << "of equals the earlier";
    EXPECT_EQ(hunt.elapsed(), 10);
    hunt.advance(7);
    EXPECT_EQ(hunt.ping(ringFar.at), ringFar) << "charged in full though 3 s are left";
    EXPECT_EQ(hunt.elapsed(), 20);
    EXPECT_EQ(hunt.pings(), 3);
    EXPECT_TRUE(hunt.isTideIn());
}

TEST_F(HuntTest, aPingWithOnlyJunkLeftIsFree) {
    // A layout with one treasure fewer than the beach promises: not over, yet nothing to point to.
    Hunt poorer(spec(), {capBeside});
    EXPECT_FALSE(poorer.ping({0.5, 0.5}));
    EXPECT_EQ(poorer.pings(), 0);
    EXPECT_EQ(poorer.elapsed(), 0);
}

TEST(Hunt, buriesFromTheGeneratorAndMovesItOn) {
    SplitMix64 rng(7), twin(7);
    const Hunt first(Campaign::beach(3), rng);
    EXPECT_EQ(first.items(), Burial::bury(Campaign::beach(3), twin));
    EXPECT_EQ(rng, twin);
    EXPECT_EQ(first.detector().range, 0.46);
    const Hunt second(Campaign::beach(3), rng);
    EXPECT_NE(second.items(), first.items());
}

TEST(Scoring, starsInTheirOrder) {
    EXPECT_EQ(Scoring::stars(2, 4, 3, 0), 0);
    EXPECT_EQ(Scoring::stars(3, 4, 3, 0), 1);
    EXPECT_EQ(Scoring::stars(3, 4, 3, 9), 1) << "junk costs nothing while treasure is left";
    EXPECT_EQ(Scoring::stars(4, 4, 3, 2), 2);
    EXPECT_EQ(Scoring::stars(4, 4, 3, 0), 3);
}

}  // namespace
}  // namespace gull
