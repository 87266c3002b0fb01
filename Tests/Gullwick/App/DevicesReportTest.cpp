#include "Gullwick/App/DevicesReport.h"
#include "Gullwick/App/TouchpadPermission.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gull {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(DevicesReportTest, aBareMachineIsToldWhatItLacks) {
    DevicesReport report;
    report.display = "none: no display";
    report.openGL = "none";
    report.audio.problem = "no such device";
    const std::string text = report.text();
    EXPECT_THAT(text, HasSubstr("display     none: no display\n"));
    EXPECT_THAT(text, HasSubstr("sound       none: no such device\n"));
    EXPECT_THAT(text, HasSubstr("trackpads   none: the mouse steers\n"));
    EXPECT_THAT(text, HasSubstr("haptics     none"));
    EXPECT_THAT(text, HasSubstr("fonts       none\n"));
    EXPECT_EQ(text.back(), '\n');
}

TEST(DevicesReportTest, aPadThatMayNotBeReadComesWithTheCommandThatAllowsIt) {
    DevicesReport report;
    report.trackpads = {{"Pad One", "/dev/input/event5", false, false, "", "no permission to read it", true},
                        {"Pad Two", "/dev/input/event7", true, true, "5 slots", "", false}};
    report.controllers = {{"Beach Pad", true, true}};
    std::string text = report.text();
    EXPECT_THAT(text, HasSubstr("Pad One (/dev/input/event5): not read\n"));
    EXPECT_THAT(text, HasSubstr("no permission to read it\n"));
    EXPECT_THAT(text, HasSubstr("to allow it: " + TouchpadPermission::command() + "\n"));
    EXPECT_THAT(text, HasSubstr("haptics     the actuator of Pad Two\n")) << "before the rumble";
    report.trackpads[0] = report.trackpads[1];
    report.trackpads[0].pulses = report.trackpads[1].pulses = false;
    text = report.text();
    EXPECT_THAT(text, Not(HasSubstr("to allow it")));
    EXPECT_THAT(text, HasSubstr("haptics     the rumble of Beach Pad\n"));
}

TEST(DevicesReportTest, anOpenSoundDeviceShowsItsFormat) {
    DevicesReport report;
    report.audio = {true, "pulseaudio", {"Speakers", "Headphones"}, 48000, 1, 512, ""};
    EXPECT_THAT(report.text(), HasSubstr("pulseaudio: 48000 Hz, 1 channel, 512 frames (10.7 ms)\n"));
    EXPECT_THAT(report.text(), HasSubstr("found: Headphones\n"));
}

}  // namespace
}  // namespace gull
