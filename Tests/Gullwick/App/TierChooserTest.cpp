#include "Gullwick/App/TierChooser.h"

#include <gtest/gtest.h>

namespace gull {
namespace {

void play(TierChooser& chooser, std::size_t frames, double interval) {
    for (std::size_t i = 0; i < frames; ++i) chooser.record(interval);
}

TEST(TierChooser, StepsDownAtTheNextBeachOnlyAndStays) {
    TierChooser chooser(false);
    play(chooser, 600, 0.033);
    EXPECT_EQ(chooser.tier(), RenderTier::full);
    chooser.beginBeach();
    EXPECT_EQ(chooser.tier(), RenderTier::fast);
    play(chooser, 600, 0.0167);
    chooser.beginBeach();
    EXPECT_EQ(chooser.tier(), RenderTier::fast);
}

TEST(TierChooser, ABeachIsJudgedByItsMiddleAndNotByAFewFrames) {
    TierChooser chooser(false);
    play(chooser, 400, 0.0167);
    play(chooser, 150, 0.2);  // something else kept the machine busy
    chooser.beginBeach();
    EXPECT_EQ(chooser.tier(), RenderTier::full);
    play(chooser, TierChooser::enoughFrames - 1, 0.2);
    chooser.beginBeach();
    EXPECT_EQ(chooser.tier(), RenderTier::full);
    EXPECT_EQ(TierChooser(true).tier(), RenderTier::fast);
}

}  // namespace
}  // namespace gull
