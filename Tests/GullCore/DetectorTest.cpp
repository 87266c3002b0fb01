#include "GullCore/Detector.h"

#include <gtest/gtest.h>
#include <vector>

namespace gull {
namespace {

using enum ItemKind;

BuriedItem item(ItemKind kind, double x, double y, double depth = 0, int id = 0) {
    return {id, kind, {x, y}, depth};
}

TEST(Detector, signalGrowsTowardTheItemAndFadesWithDepth) {
    // Values from (1 - 0.3 depth) (1 - d / reach)^1.4, computed elsewhere.
    const Detector half{0.5};
    EXPECT_EQ(half.strength(item(coin, 0.5, 0.5), {0.5, 0.5}), 1);
    EXPECT_EQ(half.strength(item(coin, 0.5, 0.25), {0.5, 0.75}), 0) << "at its reach exactly";
    EXPECT_NEAR(half.strength(item(cap, 0.5, 0.5), {0.5, 0.6}), 0.6243394105839076, 1e-12);

    const Detector shortest{0.36};
    EXPECT_NEAR(shortest.strength(item(chest, 0.5, 0.5, 0.8), {0.5, 0.5}), 0.76, 1e-12);
    EXPECT_NEAR(shortest.strength(item(chest, 0.5, 0.5, 0.8), {0.5, 0.7}), 0.09615568932748711, 1e-12);
    EXPECT_NEAR((Detector{0.55}.strength(item(coin, 0.5, 0.5, 0.15), {0.6, 0.55})), 0.5546516972278707, 1e-12)
        << "sideways counts 1.6 times";
}

TEST(Detector, whatLiesTooDeepOrTooFarIsNeverSensed) {
    EXPECT_EQ((Detector{0.36}.strength(item(coin, 0.5, 0.5), {0.5, 0.95})), 0);
    const BuriedItem lost = item(gem, 0.5, 0.5, 3);
    EXPECT_LT(Detector{0.5}.reach(lost), 0);
    EXPECT_EQ((Detector{0.5}.strength(lost, {0.5, 0.5})), 0);
    EXPECT_EQ((Detector{0.5}.read({0.5, 0.5}, std::vector{lost})), Reading::silent());
}

TEST(Detector, readsTheStrongestAloneAndTheFirstOfEquals) {
    const Detector detector{0.5};
    const std::vector items{item(coin, 0.5, 0.9, 0, 0), item(cap, 0.5, 0.5625, 0, 1),
                            item(nail, 0.5, 0.4375, 0, 2), item(ring, 0.5, 0.62, 0, 3)};
    const Reading reading = detector.read({0.5, 0.5}, items);
    ASSERT_TRUE(reading.item);
    EXPECT_EQ(reading.item->id, 1) << "the junk masks the ring, and comes before the equal nail";
    EXPECT_EQ(reading.strength, detector.strength(items[1], {0.5, 0.5}));
    EXPECT_TRUE(reading.isPinpoint);
    EXPECT_FALSE(reading.isTreasure());

    EXPECT_EQ(detector.read({0.5, 0.5}, {}), Reading::silent());
    EXPECT_FALSE(Reading::silent().isTreasure());
    EXPECT_TRUE(detector.read({0.5, 0.95}, items).isTreasure());
}

TEST(Detector, pinpointAndSpadeReachTheirRadiusInclusive) {
    const Detector detector{0.5};
    const std::vector items{item(coin, 0.5, 0)};
    EXPECT_TRUE(detector.read({0.5, 0.07}, items).isPinpoint);
    EXPECT_FALSE(detector.read({0.5, 0.0701}, items).isPinpoint);
    EXPECT_TRUE(detector.dig({0.5, 0.1}, items));
    EXPECT_FALSE(detector.dig({0.5, 0.1001}, items));
}

TEST(Detector, theSpadeTakesTheNearestWhateverItIs) {
    const Detector detector{0.5};
    const std::vector items{item(chest, 0.5, 0.5625, 0, 0), item(foil, 0.5, 0.53125, 0.3, 1),
                            item(coin, 0.5, 0.46875, 0, 2)};
    EXPECT_EQ(detector.dig({0.5, 0.5}, items)->id, 1) << "nearer than the chest, before the equal coin";
    EXPECT_FALSE(detector.dig({0.2, 0.5}, items));
}

TEST(PulseClock, ticksFasterWithTheSignal) {
    struct Row {
        double strength, treasure, junk;
    };
    for (const Row& row : {Row{0, 0.8, 1.36}, Row{0.25, 0.40964547563377807, 0.6963973085774227},
                           Row{0.5, 0.20976176963403034, 0.3565950083778516},
                           Row{0.75, 0.10740994986439417, 0.1825969147694701},
                           Row{0.777, 0.09991964372371047, 0.17}, Row{1, 0.055, 0.17}}) {
        EXPECT_NEAR(PulseClock::interval(row.strength, true), row.treasure, 1e-12);
        EXPECT_NEAR(PulseClock::interval(row.strength, false), row.junk, 1e-12);
    }
    EXPECT_EQ(PulseClock::interval(1.5, true), PulseClock::interval(1, true));
    EXPECT_EQ(PulseClock::interval(-1, false), PulseClock::interval(0, false));
}

TEST(PulseClock, aSignalAfterSilenceTicksAtOnce) {
    PulseClock clock;
    EXPECT_FALSE(clock.advance(10, 0.005, true));
    EXPECT_TRUE(clock.advance(0, 0.0051, true));
    EXPECT_FALSE(clock.advance(0.1, 0.0051, true));
    EXPECT_FALSE(clock.advance(0.1, 0, true)) << "silence";
    EXPECT_TRUE(clock.advance(0.001, 0.0051, false));
    clock = {};
    EXPECT_TRUE(clock.advance(0.001, 1, true));
}

TEST(PulseClock, ticksLandOnFramesAndDropTheRest) {
    PulseClock clock;
    int treasure = 0, junk = 0;
    for (int frame = 0; frame < 600; ++frame) treasure += clock.advance(1.0 / 60, 1, true);
    clock = {};
    for (int frame = 0; frame < 660; ++frame) junk += clock.advance(1.0 / 60, 1, false);
    EXPECT_EQ(treasure, 150) << "every fourth frame";
    EXPECT_EQ(junk, 60) << "every eleventh frame";
    clock = {};
    EXPECT_TRUE(clock.advance(0, 0.5, true));
    EXPECT_TRUE(clock.advance(PulseClock::interval(0.5, true), 0.5, true))
        << "the moment itself is not missed";
}

}  // namespace
}  // namespace gull
