#include "Gullwick/App/LeaveSignals.h"

#include <gtest/gtest.h>

#include <csignal>

namespace gull {
namespace {

TEST(LeaveSignalsTest, EndTheProgramUntilThereIsSomethingToSaveAreThenNotedAndEndItTheSecondTime) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        EXPECT_EXIT(
            {
                const LeaveSignals early;
                std::raise(signal);
            },
            testing::ExitedWithCode(0), "");
        LeaveSignals signals;
        signals.defer();
        EXPECT_FALSE(signals.received());
        std::raise(signal);
        EXPECT_TRUE(signals.received());
    }
    EXPECT_EXIT(
        {
            LeaveSignals signals;
            signals.defer();
            std::raise(SIGTERM);
            std::raise(SIGTERM);
        },
        testing::KilledBySignal(SIGTERM), "");
}

}  // namespace
}  // namespace gull
