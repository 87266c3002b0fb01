#include "Gullwick/Settings/AppSettings.h"

#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
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
    AppSettings(file_).sound = false;
    EXPECT_EQ(switches(AppSettings(file_)), "10100");
    AppSettings(file_).haptics = false;
    AppSettings(file_).trackpadSweep = false;
    AppSettings(file_).showTicks = true;
    AppSettings(file_).reduceMotion = true;
    EXPECT_EQ(switches(AppSettings(file_)), "00011");
    AppSettings(file_).sound = true;
    EXPECT_EQ(switches(AppSettings(file_)), "01011");
}

TEST_F(AppSettingsTest, everyAssignmentIsToldBeforehandAndWritten) {
    AppSettings settings(file_);
    std::string seen;
    const auto observer = settings.changes().observe([&] { seen += settings.sound() ? "on " : "off "; });
    settings.sound = false;
    settings.sound = false;
    fs::remove(file_);
    settings.sound = true;
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

    settings.trackpadSweep = false;
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
    const std::string deep = R"({"sound": false, "a": )" + std::string(100'000, '[');
    int number = 1;
    for (const std::string& noise : {std::string("\0\xff{", 3), std::string("[true]"), std::string(), deep,
                                     deep + std::string(100'000, ']') + "}"}) {
        write(noise);
        testing::internal::CaptureStderr();
        {
            AppSettings settings(file_);
            EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("is not a JSON object"));
            EXPECT_EQ(switches(settings), "11100");
            EXPECT_EQ(readText(file_), noise) << "left alone until something is assigned";
            settings.sound = false;
        }
        EXPECT_EQ(switches(AppSettings(file_)), "10100");
        const std::string count = number > 1 ? std::to_string(number) : "";
        EXPECT_EQ(readText(folder_ / ("Gullwick/settings.json.damaged" + count)), noise);
        ++number;
    }
}

TEST_F(AppSettingsTest, onlyWhatWasAssignedGoesOverWhatIsOnDiskThen) {
    AppSettings first(file_), second(file_);
    first.sound = false;
    second.showTicks = true;
    EXPECT_EQ(switches(AppSettings(file_)), "10110") << "the second has not put its own sound back";
    first.haptics = false;
    EXPECT_EQ(switches(AppSettings(file_)), "00110");
    EXPECT_EQ(fs::status(file_.parent_path()).permissions(), fs::perms(0700));
}

TEST_F(AppSettingsTest, whatCouldNotBeWrittenIsToldOnceAndWrittenLater) {
    fs::create_directories(file_);  // a folder where the file should be
    testing::internal::CaptureStderr();
    {
        AppSettings settings(file_);
        settings.sound = false;
        settings.reduceMotion = true;
        EXPECT_FALSE(settings.sound());
        EXPECT_TRUE(fs::is_directory(file_));
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(said.find("is not written"), said.rfind("is not written")) << said;
        EXPECT_THAT(said, HasSubstr("not a regular file"));
        fs::remove(file_);
        write(R"({"haptics": false})");
    }
    EXPECT_EQ(switches(AppSettings(file_)), "00101") << "at the end, over what stood there by then";

    AppSettings homeless((fs::path()));
    homeless.sound = false;
    EXPECT_FALSE(homeless.sound());
}

TEST_F(AppSettingsTest, whatCannotBeSetAsideIsNotOverwritten) {
    write("precious");
    for (const std::string number : {"", "2", "3"})
        fs::create_directory(file_.string() + ".damaged" + number);
    testing::internal::CaptureStderr();
    for (int i = 4; i <= 99; ++i) writeText(file_.string() + ".damaged" + std::to_string(i), "");
    AppSettings(file_).sound = false;
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("cannot be set aside"));
    EXPECT_EQ(readText(file_), "precious");
}

TEST_F(AppSettingsTest, numbersAndTextsAreKeptToo) {
    write(
        R"({"volume": 250, "gain": 1e300, "level": 7.0, "half": 2.5, "name": 3, "word": "ja", "odd": "9"})");
    ChangeNotifier changes;
    testing::internal::CaptureStderr();
    SettingsFile file(file_);
    Setting<int> volume(file, changes, "volume", 80, 0, 100), gain(file, changes, "gain", 1);
    Setting<int> level(file, changes, "level", 1, 0, 9), half(file, changes, "half", 1, 0, 9);
    Setting<int> odd(file, changes, "odd", 5, 0, 9), absent(file, changes, "absent", 6);
    Setting<std::string> name(file, changes, "name", "none"), word(file, changes, "word", "");
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_THAT(said, HasSubstr("\"volume\" is not a whole number from 0 to 100; taken as 100"));
    EXPECT_THAT(said, HasSubstr("\"name\" is not a text"));
    EXPECT_EQ(gain(), std::numeric_limits<int>::max());
    EXPECT_EQ(level(), 7);
    EXPECT_EQ(half(), 3);
    EXPECT_EQ(odd(), 5);
    EXPECT_EQ(absent(), 6);
    EXPECT_EQ(name(), "none");
    EXPECT_EQ(word(), "ja");
    volume = 120;
    EXPECT_EQ(volume(), 100);
    word = "n\xff";
    EXPECT_THAT(readText(file_), HasSubstr("\"volume\": 100"));
    EXPECT_THAT(readText(file_), HasSubstr("\"word\": \"n\xef\xbf\xbd\""));
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
