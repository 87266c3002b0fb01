#include "Engine/Log/Log.h"
#include "Gullwick/App/AppDelegate.h"
#include "Gullwick/App/AppIcon.h"
#include "Gullwick/App/CommandLine.h"
#include "Gullwick/App/Devices.h"
#include "Gullwick/App/Environment.h"
#include "Gullwick/App/Memory.h"
#include "Gullwick/App/SelfTestRun.h"
#include "Gullwick/App/Snapshot.h"
#include "Gullwick/App/TouchpadPermission.h"
#include "Gullwick/Settings/AppSettings.h"

#include <fmt/chrono.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace gull;

int run(const CommandLine& commandLine) {
    switch (commandLine.mode()) {
        case Mode::help:
            fmt::print("{}", CommandLine::help());
            return 0;
        case Mode::version:
            fmt::print("{}\n", CommandLine::version());
            return 0;
        case Mode::devices:
            return printDevices();
        case Mode::allowTouchpad:
            return TouchpadPermission::allow();
        case Mode::appIcons:
            return AppIcon::write(commandLine.value("--app-icons").value_or("."));
        case Mode::snapshot:
            return Snapshot::run(commandLine);
        case Mode::selfTest:
            return runSelfTest(commandLine);
        case Mode::game:
            break;
    }
    return AppDelegate(commandLine).run();
}

/// Only the game may have been started by a player without a terminal to read.
void keepLog(const CommandLine& commandLine) {
    if (commandLine.mode() != Mode::game) return;
    Log::keep(AppSettings::logFile(std::getenv));
    Log::note("{}, {:%F %T} UTC, options: {}", CommandLine::version(),
              std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()),
              fmt::join(commandLine.arguments(), " "));
}

void complain(const CommandLine& commandLine) {
    for (const std::string& complaint : commandLine.complaints()) Log::say("{}", complaint);
    const Mode mode = commandLine.mode();
    if (mode != Mode::game && mode != Mode::snapshot) return;
    for (const std::string& complaint : cameraComplaints()) Log::say("{}", complaint);
}

}  // namespace

int main(int argc, char** argv) {
    Log::completeStandardStreams();
    // Libraries write to standard error, too, and a game must not end because nobody reads it.
    std::signal(SIGPIPE, SIG_IGN);
    returnLargeBlocks();
    int status = 1;
    try {
        const CommandLine commandLine(std::vector<std::string>(argv + std::min(argc, 1), argv + argc));
        keepLog(commandLine);
        complain(commandLine);
        status = run(commandLine);
    } catch (const std::exception& error) {
        Log::say("{}", error.what());
        if (!Log::file().empty()) Log::say("the log of this run is {}", Log::file().string());
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        Log::say("standard output cannot be written");
        status = 1;
    }
    return status;
}
