// The program's other modes, through the built program and without a display.

#include "Engine/Raster/Png.h"
#include "Session/Process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gull::session {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const Environment noDisplay = {{"DISPLAY", std::nullopt},
                               {"WAYLAND_DISPLAY", std::nullopt},
                               {"SDL_VIDEODRIVER", std::nullopt},
                               {"GULLWICK_PROBE", std::nullopt},
                               {"GULLWICK_SCALE", std::nullopt}};

Result gullwick(std::vector<std::string> arguments, double seconds = 120) {
    return run(GULLWICK_BINARY, arguments, noDisplay, seconds);
}

std::optional<Image> picture(const std::filesystem::path& file) {
    const std::string bytes = contents(file);
    return decodePng(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
}

/// The letters of the title, which are nearly white.
int inkOfTitle(const Image& image) {
    int count = 0;
    for (int y = 0; y < image.height / 3; ++y)
        for (int x = 0; x < image.width / 2; ++x)
            if (image.at(x, y)[0] > 215 && image.at(x, y)[2] > 185) ++count;
    return count;
}

TEST(Modes, HelpAndVersionComeBeforeEverything) {
    const Result help = gullwick({"--selftest", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, HasSubstr("--shot FILE"));
    EXPECT_THAT(gullwick({"--version"}).output, StartsWith("Gullwick "));
}

TEST(Modes, DevicesAreToldWithoutAnyOfThem) {
    const Result devices = gullwick({"--devices"});
    EXPECT_EQ(devices.status, 0);
    for (const char* word :
         {"display ", "OpenGL ", "sound ", "trackpads ", "controllers ", "haptics ", "fonts "}) {
        EXPECT_THAT(devices.output, HasSubstr(word));
    }
}

TEST(Modes, WithoutADisplayTheGameSaysWhatIsMissing) {
    const Result game = gullwick({});
    EXPECT_EQ(game.status, 1);
    EXPECT_THAT(game.errors, HasSubstr("display"));
    EXPECT_THAT(game.errors, HasSubstr("--shot"));
}

TEST(Modes, SelfTestPassesInRealTime) {
    const Result result = gullwick({"--selftest", "2"}, 180);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, StartsWith("beach 2: Shell Bay\n"));
    EXPECT_THAT(result.output, HasSubstr("  ok    digging junk counts it\n"));
    EXPECT_THAT(result.output, EndsWith("ALL GOOD\n"));
}

TEST(Modes, SelfTestRefusesABeachThatNoSceneCanShow) {
    const Result result = gullwick({"--selftest", "1,-3"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr("--selftest: a beach has a number from 1 to 8, not -3"));
}

TEST(Modes, TheGamesOwnIconIsWrittenInAllSizesWithoutGraphics) {
    const ScratchFolder folder;
    const auto theme = folder.path() / "hicolor";
    const Result result = gullwick({"--app-icons", theme.string()});
    ASSERT_EQ(result.status, 0) << result.errors;
    const std::string name = "org.gullwick.gullwick";
    for (const int size : {16, 24, 32, 48, 64, 128, 256, 512}) {
        const std::string place = std::to_string(size) + "x" + std::to_string(size);
        const auto icon = picture(theme / place / "apps" / (name + ".png"));
        ASSERT_TRUE(icon) << place;
        EXPECT_EQ(icon->width, size);
        EXPECT_EQ(icon->height, size);
        EXPECT_LT(icon->at(0, 0)[3], 128) << place << " has no round corners";
        EXPECT_EQ(icon->at(size / 2, size / 2)[3], 255);
    }
    const std::string svg = contents(theme / "scalable" / "apps" / (name + ".svg"));
    EXPECT_THAT(svg, HasSubstr("</svg>"));
    EXPECT_THAT(svg, Not(HasSubstr("<image"))) << "a bitmap does not scale";

    EXPECT_EQ(gullwick({"--app-icons", "/dev/null/folder"}).status, 1);
}

TEST(Modes, ASeededPictureComesOutTheSameTwice) {
    const ScratchFolder folder;
    const auto first = folder.path() / "new" / "folder" / "a.png", second = folder.path() / "b.png";
    const std::vector<std::string> options = {"--size", "640x400", "--beach",  "4", "--seed",  "11",
                                              "--find", "2",       "--junk",   "1", "--trail", "--reveal",
                                              "0.8",    "--ping",  "--elapse", "40"};
    auto with = [&](const std::filesystem::path& file) {
        std::vector<std::string> arguments = options;
        arguments.insert(arguments.begin(), {"--shot", file.string()});
        return arguments;
    };
    const Result result = gullwick(with(first));
    ASSERT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "wrote " + first.string() + "\n");
    ASSERT_EQ(gullwick(with(second)).status, 0);
    EXPECT_EQ(contents(first), contents(second));
    const auto image = picture(first);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 640);
    EXPECT_EQ(image->height, 400);
}

TEST(Modes, IconsAreElevenTransparentPictures) {
    const ScratchFolder folder;
    const Result result = gullwick({"--icons", (folder.path() / "icons").string()});
    ASSERT_EQ(result.status, 0) << result.errors;
    for (const char* kind :
         {"coin", "ring", "watch", "key", "gem", "compass", "chest", "cap", "can", "nail", "foil"}) {
        const auto icon = picture(folder.path() / "icons" / (std::string(kind) + ".png"));
        ASSERT_TRUE(icon) << kind;
        EXPECT_EQ(icon->width, 160);
        EXPECT_EQ(icon->height, 160);
        EXPECT_EQ(icon->at(0, 0)[3], 0) << kind;
        int covered = 0;
        for (int y = 0; y < icon->height; ++y) {
            for (int x = 0; x < icon->width; ++x) covered += icon->at(x, y)[3] > 127 ? 1 : 0;
        }
        EXPECT_GT(covered, 600) << kind;  // the thin nail is the least of them
    }
}

TEST(Modes, WrongOptionsAreToldAndEndWithStatusOne) {
    const ScratchFolder folder;
    const std::string file = (folder.path() / "a.png").string();
    for (const auto& [arguments, word] : std::vector<std::pair<std::vector<std::string>, std::string>>{
             {{"--shot", file, "--size", "800"}, "--size"},
             {{"--shot", file, "--size", "900000x20"}, "--size"},
             {{"--shot", file, "--beach", "-1"}, "--beach"},
             {{"--shot", file, "--find", "-2", "--reveal", "1"}, "--find"}}) {
        const Result result = gullwick(arguments);
        EXPECT_EQ(result.status, 1) << word;
        EXPECT_THAT(result.errors, HasSubstr(word));
        EXPECT_FALSE(std::filesystem::exists(file));
    }
    const Result unwritable = gullwick({"--shot", "/proc/no/a.png", "--size", "64x40"});
    EXPECT_EQ(unwritable.status, 0);
    EXPECT_EQ(unwritable.output, "wrote /proc/no/a.png\n");
    EXPECT_THAT(unwritable.errors, HasSubstr("cannot be written"));
}

TEST(Modes, AShotIsWhatAWindowOfThatManyPointsShowsAtThatScale) {
    const ScratchFolder folder;
    const auto shot = [&](const char* scale) {
        Environment environment = noDisplay;
        environment["GULLWICK_SCALE"] = scale;
        const auto file = folder.path() / "shot.png";
        run(GULLWICK_BINARY, {"--shot", file.string(), "--size", "860x560", "--seed", "5"}, environment, 120);
        return picture(file);
    };
    const auto small = shot("1"), large = shot("2");
    ASSERT_TRUE(small && large);
    EXPECT_EQ(small->width, 860);
    EXPECT_EQ(large->width, 1720);
    EXPECT_EQ(large->height, 1120);
    const double ratio = 1.0 * inkOfTitle(*large) / inkOfTitle(*small);
    EXPECT_GT(ratio, 3) << "the letters, too, have twice as many pixels each way";
    EXPECT_LT(ratio, 6);
}

}  // namespace
}  // namespace gull::session
