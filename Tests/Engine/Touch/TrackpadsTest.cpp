#include "Engine/Touch/EvdevTrackpad.h"
#include "Engine/Touch/Trackpads.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace gull {
namespace {

TEST(TrackpadsTest, whateverTheMachineHasPollingNeitherWaitsNorFails) {
    Trackpads trackpads;
    for (int frame = 0; frame < 300; ++frame) trackpads.poll(frame / 60.0);
    bool isAnyRead = false;
    for (const Trackpads::Pad& pad : trackpads.pads()) {
        EXPECT_FALSE(pad.path.empty());
        EXPECT_TRUE(pad.isRead || !pad.problem.empty()) << "a pad that is not read says why";
        isAnyRead = isAnyRead || pad.isRead;
    }
    EXPECT_TRUE(isAnyRead ? !trackpads.missesPermission() : trackpads.contacts().empty());
    if (!trackpads.isAvailable()) trackpads.perform(HapticPattern::levelChange);  // nothing happens
}

TEST(TrackpadsTest, whatIsNoEventDeviceIsRefusedWithAReason) {
    const TemporaryFolder folder;
    EXPECT_EQ(EvdevTrackpad::open(folder / "missing").error, ENOENT);
    writeText(folder / "text", "not a device");
    const auto opened = EvdevTrackpad::open(folder / "text");
    EXPECT_EQ(opened.pad, nullptr);
    EXPECT_NE(opened.error, 0);
    EXPECT_EQ(EvdevTrackpad::open("/dev/null").pad, nullptr);
}

}  // namespace
}  // namespace gull
