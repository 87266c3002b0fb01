#include "Gullwick/App/TouchpadPermission.h"

#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace gull {
namespace {

using testing::HasSubstr;

std::string contents(const std::filesystem::path& file) {
    std::ifstream in(file);
    return {(std::istreambuf_iterator<char>(in)), {}};
}

TEST(TouchpadPermissionTest, WritesTheRulesOfThePackage) {
    const TemporaryFolder folder;
    EXPECT_EQ(TouchpadPermission::allow(folder.path(), "true"), 0);
    for (const char* name : {"70-gullwick-touchpad.rules", "74-gullwick-touchpad.rules"}) {
        const std::string written = contents(folder.path() / name);
        EXPECT_EQ(written, contents(std::filesystem::path("Packaging") / name));
        EXPECT_THAT(written, HasSubstr("ENV{ID_INPUT_KEYBOARD}!=\"1\"")) << "what is typed stays unread";
    }
}

TEST(TouchpadPermissionTest, TheCommandIsOneThatTheShellAndTheMachineKnow) {
    using TouchpadPermission::commandFor;
    EXPECT_EQ(commandFor("/usr/bin/gullwick", true), "sudo gullwick --allow-touchpad");
    EXPECT_EQ(commandFor("/usr/games/gullwick", true), "sudo /usr/games/gullwick --allow-touchpad")
        << "sudo does not look for games";
    EXPECT_EQ(commandFor("/home/me/my games/gullwick", true),
              "sudo '/home/me/my games/gullwick' --allow-touchpad");
    EXPECT_EQ(commandFor("/usr/games/gullwick", false), "su -c '/usr/games/gullwick --allow-touchpad'");
    EXPECT_THAT(TouchpadPermission::command(), HasSubstr(" --allow-touchpad"));
}

TEST(TouchpadPermissionTest, SaysWhoCanWhenItCannot) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(TouchpadPermission::allow("/proc/no/such/folder", "true"), 1);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("administrator: su"));
}

}  // namespace
}  // namespace gull
