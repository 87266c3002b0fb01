#include "Engine/Compositor/WaterPace.h"

#include <gtest/gtest.h>

namespace gull::test {
namespace {

/// The pace after a while in which every `each`th frame takes `slow` seconds and the others `usual`.
int paceAfter(double usual, double slow, int each) {
    WaterPace pace;
    for (int frame = 1; frame <= 2000; ++frame) pace.frameTook(frame % each == 0 ? slow : usual);
    return pace.pixels();
}

TEST(WaterPace, TakesTheTimeThereIsAndGivesWayWhenFramesAreLate) {
    EXPECT_EQ(paceAfter(0.006, 0.006, 1), static_cast<int>(WaterPace::most));
    EXPECT_EQ(paceAfter(0.013, 0.013, 1), static_cast<int>(WaterPace::least));
    // One late frame in a hundred is chance; one in seven is a machine with other work.
    EXPECT_GT(paceAfter(0.010, 0.025, 100), 0.8 * WaterPace::most);
    EXPECT_LT(paceAfter(0.010, 0.025, 7), 1.2 * WaterPace::least);
}

}  // namespace
}  // namespace gull::test
