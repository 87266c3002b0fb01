#include "Engine/Render/StripPace.h"

#include <gtest/gtest.h>

namespace gull::test {
namespace {

/// The pace after a while in which every `each`th frame takes `slow` seconds, the others `usual`.
int paceAfter(double usual, double slow, int each) {
    StripPace pace;
    for (int frame = 1; frame <= 2000; ++frame) pace.frameTook(frame % each == 0 ? slow : usual);
    return pace.pixels();
}

TEST(StripPace, TakesTheTimeThereIsAndGivesWayWhenFramesAreLate) {
    EXPECT_EQ(paceAfter(0.006, 0.006, 1), static_cast<int>(StripPace::most));
    EXPECT_EQ(paceAfter(0.013, 0.013, 1), static_cast<int>(StripPace::least));
    // One late frame in a hundred is chance; one in seven is a machine with other work.
    EXPECT_GT(paceAfter(0.010, 0.025, 100), 0.8 * StripPace::most);
    EXPECT_LT(paceAfter(0.010, 0.025, 7), 1.2 * StripPace::least);
}

}  // namespace
}  // namespace gull::test
