#include "Gullwick/Settings/AppSettings.h"

#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace gull {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::string switches(const AppSettings& settings) {
    std::string text;
    for (const bool on : {settings.haptics(), settings.sound(), settings.trackpadSweep(),
                          settings.showTicks(), settings.reduceMotion()}) {
        text += on ? '1' : '0';
    }
    return text;
}

class AppSettingsTest : public testing::Test {
  protected:
    TemporaryFolder folder_;
    fs::path file_ = folder_ / "Gullwick/settings.json";

    void write(const std::string& text) {
        fs::create_directories(file_.parent_path());
        writeText(file_, text);
    }
};

TEST_F(AppSettingsTest, withoutAFileEverySwitchStandsAtItsDefault) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(switches(AppSettings(file_)), "11100");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(fs::exists(file_)) << "reading makes nothing";
}

TEST_F(AppSettingsTest, aSwitchSurvivesARestart) {
    AppSettings(file_).setSound(false);
    EXPECT_EQ(switches(AppSettings(file_)), "10100");
    AppSettings(file_).setHaptics(false);
    AppSettings(file_).setTrackpadSweep(false);
    AppSettings(file_).setShowTicks(true);
    AppSettings(file_).setReduceMotion(true);
    EXPECT_EQ(switches(AppSettings(file_)), "00011");
    AppSettings(file_).setSound(true);
    EXPECT_EQ(switches(AppSettings(file_)), "01011");
}

TEST_F(AppSettingsTest, everyAssignmentIsToldBeforehandAndWritten) {
    AppSettings settings(file_);
    std::string seen;
    settings.changes().observe([&] { seen += settings.sound() ? "on " : "off "; });
    settings.setSound(false);
    settings.setSound(false);
    fs::remove(file_);
    settings.setSound(true);
    EXPECT_EQ(seen, "on off off ");
    EXPECT_TRUE(fs::exists(file_));
}

TEST_F(AppSettingsTest, whatIsGoodInTheFileCountsAndWhatIsUnknownStays) {
    write(
        R"({"sound": false, "haptics": "loud", "volume": {"surf": 3}, "reduceMotion": 1, "showTicks": null})");
    testing::internal::CaptureStderr();
    AppSettings settings(file_);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(switches(settings), "00101");
    EXPECT_THAT(said, HasSubstr("\"haptics\" is neither true nor false"));
    EXPECT_THAT(said, HasSubstr("\"showTicks\" is neither"));
    EXPECT_THAT(said, testing::Not(HasSubstr("reduceMotion")));

    settings.setTrackpadSweep(false);
    const std::string text = readText(file_);
    EXPECT_THAT(text, HasSubstr("\"surf\": 3"));
    EXPECT_THAT(text, HasSubstr("\"haptics\": \"loud\"")) << "only the assigned key changes";
    EXPECT_THAT(text, HasSubstr("\"trackpadSweep\": false"));
}

TEST_F(AppSettingsTest, anythingUnderAKeyReadsAsABooleanAndOnlyAnAbsentKeyIsTheDefault) {
    testing::internal::CaptureStderr();
    for (const char* on : {"true", "1", "-0.5", "\"YES\"", "\"true\"", "\" +007\"", "\"yonder\""}) {
        write(std::string(R"({"sound": )") + on + "}");
        EXPECT_EQ(switches(AppSettings(file_)), "11100") << on;
    }
    for (const char* off : {"false", "0", "0.0", "\"NO\"", "\"false\"", "\"000\"", "\"\"", "\"-\"", "null",
                            "[1]", "{\"on\": true}"}) {
        write(std::string(R"({"sound": )") + off + "}");
        EXPECT_EQ(switches(AppSettings(file_)), "10100") << off;
    }
    testing::internal::GetCapturedStderr();
}

TEST_F(AppSettingsTest, noiseIsSetAsideBeforeItIsReplaced) {
    for (const std::string& noise : {std::string("\0\xff{", 3), std::string("[true]"), std::string()}) {
        write(noise);
        testing::internal::CaptureStderr();
        AppSettings settings(file_);
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("is not a JSON object"));
        EXPECT_EQ(switches(settings), "11100");
        EXPECT_EQ(readText(file_), noise) << "left alone until something is assigned";

        settings.setSound(false);
        EXPECT_EQ(switches(AppSettings(file_)), "10100");
        EXPECT_EQ(readText(folder_ / "Gullwick/settings.json.damaged"), noise);
    }
}

TEST_F(AppSettingsTest, whatCannotBeReadOrWrittenIsToldOnceAndNeverStopsTheGame) {
    fs::create_directories(file_);  // a folder where the file should be
    testing::internal::CaptureStderr();
    AppSettings unreadable(file_);
    unreadable.setSound(false);
    EXPECT_FALSE(unreadable.sound());
    EXPECT_TRUE(fs::is_directory(file_));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("not a regular file"));

    AppSettings homeless((fs::path()));
    homeless.setSound(false);
    EXPECT_FALSE(homeless.sound());
}

TEST(AppSettingsPlaces, followTheEnvironment) {
    std::map<std::string, std::string> variables{{"HOME", "/home/pat"}};
    const AppSettings::Environment environment = [&](const char* name) -> const char* {
        const auto found = variables.find(name);
        return found == variables.end() ? nullptr : found->second.c_str();
    };
#ifdef __APPLE__
    EXPECT_EQ(AppSettings::progressURL(environment),
              "/home/pat/Library/Application Support/Gullwick/progress.json");
#else
    EXPECT_EQ(AppSettings::defaultFile(environment), "/home/pat/.config/Gullwick/settings.json");
    EXPECT_EQ(AppSettings::progressURL(environment), "/home/pat/.local/share/Gullwick/progress.json");

    variables["XDG_CONFIG_HOME"] = "/etc/pat";
    variables["XDG_DATA_HOME"] = "/srv/pat";
    EXPECT_EQ(AppSettings::defaultFile(environment), "/etc/pat/Gullwick/settings.json");
    EXPECT_EQ(AppSettings::progressURL(environment), "/srv/pat/Gullwick/progress.json");

    variables["XDG_CONFIG_HOME"] = "";
    variables["XDG_DATA_HOME"] = "relative";
    EXPECT_EQ(AppSettings::defaultFile(environment), "/home/pat/.config/Gullwick/settings.json");
    EXPECT_EQ(AppSettings::progressURL(environment), "/home/pat/.local/share/Gullwick/progress.json");
#endif
    variables["GULLWICK_SAVE"] = "some/../where.json";
    EXPECT_EQ(AppSettings::progressURL(environment), "some/../where.json");
    variables["GULLWICK_SAVE"] = "";
    EXPECT_EQ(AppSettings::progressURL(environment), "");
}

}  // namespace
}  // namespace gull
