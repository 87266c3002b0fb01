#include "Engine/Log/Log.h"
#include "Engine/Log/Require.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <string>

namespace gull {
namespace {

TEST(Require, aBrokenPreconditionPrintsWhatItSawKeepsItAndStops) {
    const TemporaryFolder folder;
    const auto log = folder / "last-run.log";
    const std::string name = "sheet";
    EXPECT_DEATH(
        {
            Log::keep(log);
            require(name.empty(), "{} of {} by {} at {}", name, -3, std::size_t{18}, 0.25);
        },
        "^gullwick: sheet of -3 by 18 at 0.25\n");
    EXPECT_TRUE(readText(log).ends_with("  sheet of -3 by 18 at 0.25\n")) << readText(log);
    EXPECT_DEATH(brokenPrecondition("no sound of kind {}", 12), "^gullwick: no sound of kind 12\n");
}

TEST(Require, aPreconditionThatHoldsPrintsNothing) {
    testing::internal::CaptureStderr();
    require(true, "not shown: {}", 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace gull
