// The messages of the built program when it cannot start, for those who see a terminal and for those who do
// not.

#include "Session/Process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gull::session {
namespace {

using testing::HasSubstr;

class Messages : public testing::Test {
  protected:
    ScratchFolder home_;
    const std::string log_ = (home_.path() / "state/Gullwick/last-run.log").string();

    Result inShell(const std::string& command) {
        return run("sh", {"-c", "\"$0\" " + command, GULLWICK_BINARY},
                   {{"DISPLAY", std::nullopt},
                    {"WAYLAND_DISPLAY", std::nullopt},
                    {"SDL_VIDEODRIVER", std::nullopt},
                    {"GULLWICK_SCALE", "many"},
                    {"XDG_STATE_HOME", (home_.path() / "state").string()}});
    }
};

TEST_F(Messages, AStartThatFailsIsToldWhereItCanBeRead) {
    const Result game = inShell("--seed x");
    EXPECT_EQ(game.status, 1);
    EXPECT_THAT(game.errors, HasSubstr("gullwick: the log of this run is " + log_ + "\n"));
    const std::string log = contents(log_);
    EXPECT_THAT(log, HasSubstr("Gullwick 0"));
    EXPECT_THAT(log, HasSubstr("options: --seed x\n"));
    EXPECT_THAT(log, HasSubstr("--seed takes N"));
    EXPECT_THAT(log, HasSubstr("display"));
    const Result devices = inShell("--devices");
    EXPECT_THAT(devices.output, HasSubstr("\nlog         " + log_ + "\n"));
    EXPECT_EQ(contents(log_), log) << "only a game makes a log";
}

TEST_F(Messages, WhereNothingCanBeWrittenItFailsAsUsual) {
    for (const char* where : {"2>/dev/full", "2>&-", ">&- 2>&-", "2>&1 | :; exit 1"}) {
        EXPECT_EQ(inShell(std::string("--seed x ") + where).status, 1) << where;
        EXPECT_THAT(contents(log_), HasSubstr("display")) << where;
    }
    const Result noPicture = inShell("--shot /proc/none/a.png --size 64x40 --coil x 2>/dev/full");
    EXPECT_EQ(noPicture.status, 0) << "a picture that cannot be written is told, no more";
    const Result help = inShell("--help >/dev/full");
    EXPECT_EQ(help.status, 1);
    EXPECT_EQ(help.errors, "gullwick: standard output cannot be written\n");
}

}  // namespace
}  // namespace gull::session
