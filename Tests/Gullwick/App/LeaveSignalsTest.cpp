#include "Gullwick/App/LeaveSignals.h"

#include <gtest/gtest.h>

#include <csignal>

namespace gull {
namespace {

TEST(LeaveSignalsTest, AreNotedOnceAndASecondOneEndsTheProgram) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const LeaveSignals signals;
        EXPECT_FALSE(signals.received());
        std::raise(signal);
        EXPECT_TRUE(signals.received());
    }
    EXPECT_EXIT(
        {
            const LeaveSignals signals;
            std::raise(SIGTERM);
            std::raise(SIGTERM);
        },
        testing::KilledBySignal(SIGTERM), "");
}

}  // namespace
}  // namespace gull
