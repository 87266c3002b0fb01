// The real program in a real window, played with mouse and keys as a person would.

#include "Engine/Raster/Png.h"
#include "GullCore/Progress.h"
#include "Session/Desktop.h"
#include "Session/GameTrace.h"
#include "Session/PlayersMap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <set>

namespace gull::session {
namespace {

using testing::HasSubstr;

constexpr int screenWidth = 1280, screenHeight = 860;

class Session : public testing::Test {
  protected:
    Desktop desktop_{screenWidth, screenHeight};
    ScratchFolder home_;

    const GameTrace trace_{home_.path() / "trace"};

    std::unique_ptr<Process> start(const std::vector<std::string>& arguments, const Environment& more = {}) {
        Environment environment = desktop_.environment(home_.path());
        environment["GULLWICK_TRACE"] = (home_.path() / "trace").string();
        for (const auto& [key, value] : more) environment[key] = value;
        return std::make_unique<Process>(GULLWICK_BINARY, arguments, environment, home_.path());
    }
    /// A game in play, in a window that has the keyboard.
    std::unique_ptr<Process> play(const std::vector<std::string>& arguments, const Environment& more = {}) {
        auto game = start(arguments, more);
        EXPECT_TRUE(desktop_.waitForWindow("Gullwick", patience)) << game->errors();
        EXPECT_TRUE(trace_.wait("phase", "playing") && trace_.wait("meant", "1")) << game->errors();
        return game;
    }
    void type(std::initializer_list<const char*> keys) {
        for (const char* key : keys) desktop_.key(key);
    }
    void quit(Process& game) {
        desktop_.key("ctrl+q");
        EXPECT_EQ(game.wait(patience), 0) << game.errors();
    }
    /// The folder in which a session's pictures are left for people to look at.
    static std::filesystem::path pictures() {
        std::filesystem::create_directories(SESSION_PICTURES);
        return SESSION_PICTURES;
    }
    std::filesystem::path progressFile() const {
        return home_.path() / "data" / "Gullwick" / "progress.json";
    }
};

TEST_F(Session, BeachOneIsPlayedWithTheMouseToThreeStars) {
    const PlayersMap map;
    const auto game = play({"--seed", "7"});
    desktop_.screenshot(pictures() / "opening.png");
    double holes = 0;
    for (const BuriedItem& treasure : map.treasures()) {
        const glm::ivec2 at = map.mouse(treasure.at);
        desktop_.moveMouse(at.x, at.y);
        // It stands still until the last dig is over.
        ASSERT_TRUE(trace_.waitForCoil(treasure.at.x, treasure.at.y));
        desktop_.click();
        ++holes;
        ASSERT_TRUE(eventually([&] { return trace_.number("holes") == holes; })) << "a click digs";
    }
    ASSERT_TRUE(trace_.wait("phase", "finished"));
    EXPECT_EQ(holes, 3);
    const CampaignProgress progress = CampaignProgress::load(progressFile());
    EXPECT_EQ(progress.stars.at(1), 3);
    EXPECT_EQ(progress.bestHaul.at(1), 220);
    EXPECT_TRUE(trace_.waitForPictures(30));
    desktop_.screenshot(pictures() / "result.png");

    // On to the next beach with a click; its ping, the select and back, and its restart by keys.
    desktop_.click();
    EXPECT_TRUE(trace_.wait("phase", "playing"));
    EXPECT_TRUE(trace_.wait("toast", "Beach 2"));
    desktop_.key("h");
    EXPECT_TRUE(trace_.wait("toast", "Ping"));
    desktop_.key("l");
    EXPECT_TRUE(trace_.wait("phase", "selecting"));
    type({"Right", "Escape"});
    EXPECT_TRUE(trace_.wait("phase", "playing"));
    desktop_.key("r");
    EXPECT_TRUE(trace_.wait("phase", "intro"));
    EXPECT_TRUE(game->isRunning());
    quit(*game);
}

TEST_F(Session, WhereNobodyHandsOutTheKeyboardTheWindowTakesIt) {
    const auto game = start({});
    ASSERT_TRUE(desktop_.waitForWindowAlone("Gullwick", patience)) << game->errors();
    std::optional<int> status;
    for (int tries = 0; tries < 60 && !status; ++tries) {  // keys may come before the window has it
        desktop_.key("ctrl+q");
        status = game->wait(0.5);
    }
    EXPECT_EQ(status, 0) << game->errors();
}

TEST_F(Session, MenusAlertAndSelectAreWalkedWithKeysAlone) {
    const std::string passed = R"({"stars":{"1":3},"bestHaul":{"1":220}})";
    std::filesystem::create_directories(progressFile().parent_path());
    std::ofstream(progressFile()) << passed;
    const auto game = play({});
    // Options: the second line is the sound switch.
    type({"F10", "Right", "Right", "Down", "Return"});
    const auto settings = home_.path() / "config" / "Gullwick" / "settings.json";
    EXPECT_TRUE(eventually([&] { return contents(settings).find("\"sound\": false") != std::string::npos; }));

    // Game: the line above the pause asks before it erases; the safe answer has the focus.
    type({"F10", "Right", "Up", "Up", "Return"});
    EXPECT_TRUE(trace_.waitForPictures(30));
    desktop_.screenshot(pictures() / "alert.png");
    type({"Return"});
    EXPECT_TRUE(trace_.waitForPictures(10));
    EXPECT_EQ(contents(progressFile()), passed);

    // The beach select opens the beach chosen by keys: the first one opens, then a locked one is refused.
    type({"l"});
    EXPECT_TRUE(trace_.wait("phase", "selecting"));
    type({"Left", "Return"});
    EXPECT_TRUE(trace_.wait("phase", "playing"));
    type({"l", "Down"});
    EXPECT_TRUE(trace_.wait("phase", "selecting"));
    EXPECT_TRUE(trace_.waitForPictures(30));
    desktop_.screenshot(pictures() / "select.png");
    type({"Return", "Escape"});
    EXPECT_TRUE(trace_.wait("phase", "playing"));

    type({"F10", "Right", "Up", "Up", "Return", "Tab", "Return"});
    EXPECT_TRUE(eventually([&] { return contents(progressFile()) != passed; }));
    EXPECT_EQ(CampaignProgress::load(progressFile()), CampaignProgress());

    type({"Alt_L"});
    type({"Escape", "F11"});
    EXPECT_TRUE(trace_.wait("full", "1"));
    quit(*game);
}

TEST_F(Session, ABeachStandsStillInAPauseAndPicturesAreTakenOfIt) {
    const auto game = play({"--seed", "7"});
    const auto folder = home_.path() / "Pictures";
    std::set<std::filesystem::path> seen;
    const auto picture = [&] {
        desktop_.key("F12");
        for (double waited = 0; waited < patience; waited += 0.1) {
            pause(0.1);
            if (!std::filesystem::exists(folder)) continue;
            for (const auto& entry : std::filesystem::directory_iterator(folder)) {
                if (entry.path().extension() != ".png" || !seen.insert(entry.path()).second) continue;
                const std::string bytes = contents(entry.path());
                if (const auto image = decodePng(std::vector<std::uint8_t>(bytes.begin(), bytes.end())))
                    return *image;
            }
        }
        ADD_FAILURE() << "no picture came";
        return Image(1240, 800);
    };
    /// The tide clock and its bar.
    const auto clockOf = [](const Image& image) {
        std::vector<std::uint8_t> pixels;
        for (int y = 20; y < 110; ++y) {
            const std::uint8_t* row = image.at(1040, y);
            pixels.insert(pixels.end(), row, row + std::size_t{180} * 4);
        }
        return pixels;
    };
    desktop_.key("p");
    EXPECT_TRUE(trace_.wait("paused", "1"));
    // The fade to the pause may still be on its way.
    Image still = picture();
    ASSERT_EQ(still.width, 1240);
    bool stands = false;
    for (int tries = 0; tries < 8 && !stands; ++tries) {
        pause(2.5);
        const Image later = picture();
        stands = clockOf(later) == clockOf(still);
        still = later;
    }
    EXPECT_TRUE(stands) << "the tide waits";
    std::filesystem::copy_file(*std::prev(seen.end()), pictures() / "paused.png",
                               std::filesystem::copy_options::overwrite_existing);
    desktop_.moveMouse(620, 400);
    desktop_.click();
    EXPECT_TRUE(eventually([&] { return clockOf(picture()) != clockOf(still); })) << "and goes on";
    desktop_.key("F10");
    quit(*game);  // over an open menu, too
}

TEST_F(Session, TheProbeMeasuresAndKeepsNothing) {
    const auto picture = home_.path() / "probe.png";
    const auto capture = home_.path() / "capture.raw";
    const auto probe = start({}, {{"GULLWICK_PROBE", picture.string()},
                                  {"GULLWICK_PROBE_BEACH", "+3"},
                                  {"SDL_AUDIODRIVER", "disk"},
                                  {"SDL_DISKAUDIOFILE", capture.string()}});
    ASSERT_EQ(probe->wait(patience), 0) << probe->errors();
    double rate = 0;
    int width = 0, height = 0;
    ASSERT_EQ(std::sscanf(probe->output().c_str(), "probe: %lf fps at %dx%d (backing scale 1)", &rate, &width,
                          &height),
              3)
        << probe->output();
    EXPECT_GT(rate, 1);
    EXPECT_EQ(width, 1240);
    EXPECT_EQ(height, 800);
    EXPECT_THAT(probe->output(), HasSubstr("probe: wrote " + picture.string() + "\n"));
    const std::string bytes = contents(picture);
    const auto image = decodePng(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 1240);
    EXPECT_FALSE(std::filesystem::exists(progressFile()));
    EXPECT_EQ(contents(capture).find_first_not_of('\0'), std::string::npos) << "not even the surf is heard";
}

TEST_F(Session, BadFilesAndValuesNeverStopTheGame) {
    std::filesystem::create_directories(home_.path() / "config" / "Gullwick");
    std::ofstream(home_.path() / "config" / "Gullwick" / "settings.json") << "\x01noise{{{";
    const auto game = start({"--nosuch"}, {{"GULLWICK_SAVE", home_.path().string()},  // a folder
                                           {"GW_CAM", "up,there"},
                                           {"GW_FOV", "wide"},
                                           {"GULLWICK_SCALE", "huge"}});
    ASSERT_TRUE(desktop_.waitForWindow("Gullwick", patience)) << game->errors();
    EXPECT_TRUE(trace_.waitForPictures(10));
    EXPECT_TRUE(game->isRunning());
    EXPECT_THAT(game->errors(), HasSubstr("--nosuch"));
    EXPECT_THAT(game->errors(), HasSubstr("GULLWICK_SCALE"));
    EXPECT_THAT(game->errors(), testing::AllOf(HasSubstr("GW_CAM"), HasSubstr("GW_FOV")));
    EXPECT_THAT(game->errors(), HasSubstr("settings.json"));
    quit(*game);
}

}  // namespace
}  // namespace gull::session
