#include "Gullwick/App/AppDelegate.h"
#include "Gullwick/App/CommandLine.h"
#include "Gullwick/App/Devices.h"
#include "Gullwick/App/Environment.h"
#include "Gullwick/App/Memory.h"
#include "Gullwick/App/SelfTestRun.h"
#include "Gullwick/App/Snapshot.h"

#include <fmt/format.h>

#include <cstdio>
#include <exception>

namespace {

int run(const gull::CommandLine& commandLine) {
    using gull::Mode;
    switch (commandLine.mode()) {
        case Mode::help:
            fmt::print("{}", gull::CommandLine::help());
            return 0;
        case Mode::version:
            fmt::print("{}\n", gull::CommandLine::version());
            return 0;
        case Mode::devices:
            return gull::printDevices();
        case Mode::snapshot:
            return gull::Snapshot::run(commandLine);
        case Mode::selfTest:
            return gull::runSelfTest(commandLine);
        case Mode::game:
            break;
    }
    return gull::AppDelegate(commandLine).run();
}

}  // namespace

int main(int argc, char** argv) {
    gull::returnLargeBlocks();
    const gull::CommandLine commandLine(std::vector<std::string>(argv + 1, argv + argc));
    for (const std::string& complaint : commandLine.complaints())
        fmt::print(stderr, "gullwick: {}\n", complaint);
    const gull::Mode mode = commandLine.mode();
    if (mode == gull::Mode::game || mode == gull::Mode::snapshot)
        for (const std::string& complaint : gull::cameraComplaints())
            fmt::print(stderr, "gullwick: {}\n", complaint);
    int status = 1;
    try {
        status = run(commandLine);
    } catch (const std::exception& error) {
        fmt::print(stderr, "gullwick: {}\n", error.what());
    }
    std::fflush(stdout);
    return status;
}
