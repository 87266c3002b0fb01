#include "GullCore/Rng.h"

#include <gtest/gtest.h>

namespace gull {
namespace {

TEST(SplitMix64, givesThePublishedSequence) {
    SplitMix64 rng(0);
    EXPECT_EQ(rng.next(), 0xe220a8397b1dcdafu);
    EXPECT_EQ(rng.next(), 0x6e789e6aa1b965f4u);
    EXPECT_EQ(rng.next(), 0x06c45d188009454fu);
}

TEST(Uniform, scalesAnIntegerDrawWithoutFusing) {
    SplitMix64 rng(42);
    for (const double expected :
         {0x1.67e468bb08d34p-1, 0x1.b6efe25129be0p-3, 0x1.418fc19f733ecp-2, 0x1.79faa56d77b3fp-2}) {
        EXPECT_EQ(uniform(rng, 0.08, 0.92), expected);
    }
}

// The states below were found by running the generator backwards from the output wanted.
TEST(Uniform, theUpperEndItselfCanComeUp) {
    SplitMix64 rng(0x31628af67b2131ab);  // next() gives 2^64 - 1
    EXPECT_EQ(uniform(rng, -1, 0.1), 0.1) << "(b - a) + a would miss it by a last bit";
    EXPECT_EQ(rng.state, 0xcf9a04affa6badc0u);
}

TEST(Uniform, aBiasedDrawIsThrownAwayAndDrawnAgain) {
    SplitMix64 zero(0x61c8864680b583eb);  // next() gives 0, the clearest case of all
    EXPECT_EQ(uniform(zero, 0.25, 0.75), 0x1.6220a8397b1ddp-1);
    EXPECT_EQ(zero.state, 0x9e3779b97f4a7c15u) << "two outputs taken";

    SplitMix64 lastRejected(0x435dffb713b1459d);
    EXPECT_EQ(uniform(lastRejected, 0, 1), 0x1.2d65c925d223cp-2);
    SplitMix64 firstAccepted(0xb10cf336c80b6cad);
    EXPECT_EQ(uniform(firstAccepted, 0, 1), 1);
    EXPECT_EQ(firstAccepted.state, 0xb10cf336c80b6cadu + 0x9e3779b97f4a7c15u) << "one output taken";
}

}  // namespace
}  // namespace gull
