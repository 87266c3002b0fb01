#include "Gullwick/App/SelfTestRun.h"

#include "Engine/Log/Log.h"
#include "Gullwick/App/BeachNumber.h"
#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/SelfTest.h"
#include "Gullwick/Settings/AppSettings.h"

#include <fmt/format.h>

#include <cstdio>

namespace gull {

int runSelfTest(const CommandLine& commandLine) {
    for (const int number : SelfTest::beaches(commandLine.arguments())) {
        if (const auto problem = beachProblem(number)) {
            Log::say("--selftest: {}", *problem);
            return 1;
        }
    }
    UptimeClock clock;
    MainLoop loop(clock);
    AppSettings settings({});
    Feedback feedback(settings, loop, nullptr, nullptr);
    Task<int> run =
        SelfTest::run(loop, settings, feedback, commandLine.arguments(), [](const std::string& line) {
            fmt::print("{}\n", line);
            std::fflush(stdout);
        });
    run.start([&](int status) { loop.quit(status); });
    return loop.runUntilQuit();
}

}  // namespace gull
