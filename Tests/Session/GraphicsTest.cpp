// Machines without OpenGL, or with it in unusual ways: the game plays or says what is missing.

#include "Session/Desktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gull::session {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

class Graphics : public testing::Test {
  protected:
    ScratchFolder home_;

    Result gullwick(const Desktop& desktop, const std::vector<std::string>& arguments,
                    const Environment& changes = {}) {
        Environment environment = desktop.environment(home_.path());
        for (const auto& [name, value] : changes) environment[name] = value;
        return run(GULLWICK_BINARY, arguments, environment, 120);
    }
};

TEST_F(Graphics, WithoutADriverTheGameSaysWhatIsMissing) {
    const Desktop desktop(1280, 860);
    const Environment noDriver = {{"LIBGL_DRIVERS_PATH", "/nonexistent"}};
    const Result game = gullwick(desktop, {}, noDriver);
    EXPECT_EQ(game.status, 1);
    EXPECT_THAT(game.errors, ContainsRegex("gullwick: [^\n]*OpenGL[^\n]*libgl1-mesa-dri"));
    EXPECT_THAT(game.errors, Not(HasSubstr("X Error")));
    const Result devices = gullwick(desktop, {"--devices"}, noDriver);
    EXPECT_EQ(devices.status, 0);
    EXPECT_THAT(devices.output, HasSubstr("\nsound ")) << "the rest is told all the same";
    EXPECT_THAT(devices.output, ContainsRegex("display     [^\n]*libgl1-mesa-dri"));
}

TEST_F(Graphics, AnOldOpenGLIsRefusedInWords) {
    const Desktop desktop(1280, 860);
    const Result game = gullwick(desktop, {}, {{"MESA_GL_VERSION_OVERRIDE", "2.1"}});
    EXPECT_EQ(game.status, 1);
    EXPECT_THAT(game.errors, HasSubstr("gullwick: OpenGL 3.3 is needed"));
    EXPECT_THAT(game.errors, Not(HasSubstr("X Error")));
}

TEST_F(Graphics, ARasteriserWithoutMultisamplingIsRefusedInWords) {
    const Desktop desktop(1280, 860);
    const Environment softpipe = {{"GALLIUM_DRIVER", "softpipe"}};
    const std::string sentence =
        "OpenGL with 4 samples a pixel is needed; \"softpipe\" has 1. Where GALLIUM_DRIVER";
    const std::string picture = (home_.path() / "a.png").string();
    for (const auto& arguments : {std::vector<std::string>{}, {"--shot", picture}}) {
        const Result game = gullwick(desktop, arguments, softpipe);
        EXPECT_EQ(game.status, 1);
        EXPECT_THAT(game.errors, HasSubstr("gullwick: " + sentence));
    }
    EXPECT_THAT(gullwick(desktop, {"--devices"}, softpipe).output,
                HasSubstr("picture     none: " + sentence));
}

TEST_F(Graphics, WithoutGlxTheGamePlaysByEgl) {
    const Desktop desktop(1280, 860, "-extension GLX");
    const Result devices = gullwick(desktop, {"--devices"});
    EXPECT_THAT(devices.output, HasSubstr("display     x11, "));
    const auto picture = home_.path() / "probe.png";
    const Result game = gullwick(desktop, {}, {{"GULLWICK_PROBE", picture.string()}});
    EXPECT_EQ(game.status, 0) << game.errors;
    EXPECT_TRUE(std::filesystem::exists(picture));
    EXPECT_THAT(contents(home_.path() / "state/Gullwick/last-run.log"), HasSubstr("comes from EGL"));
}

}  // namespace
}  // namespace gull::session
