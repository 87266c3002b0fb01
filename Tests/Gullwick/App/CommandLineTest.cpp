#include "Gullwick/App/CommandLine.h"

#include "Gullwick/App/Numbers.h"
#include "Gullwick/App/SnapshotOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace gull {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

CommandLine line(std::vector<std::string> words) {
    return CommandLine(std::move(words));
}

SnapshotOptions parsed(std::vector<std::string> words) {
    auto result = SnapshotOptions::parse(line(std::move(words)));
    if (const auto* problem = std::get_if<std::string>(&result)) {
        ADD_FAILURE() << *problem;
        return {};
    }
    return std::get<SnapshotOptions>(std::move(result));
}

std::string refused(std::vector<std::string> words) {
    const auto result = SnapshotOptions::parse(line(std::move(words)));
    const auto* problem = std::get_if<std::string>(&result);
    return problem ? *problem : std::string();
}

TEST(CommandLine, ModeIsChosenByWholeWordsAnywhere) {
    EXPECT_EQ(line({}).mode(), Mode::game);
    EXPECT_EQ(line({"2,5", "--selftest"}).mode(), Mode::selfTest);
    EXPECT_EQ(line({"--selftest", "--icon"}).mode(), Mode::snapshot);
    EXPECT_EQ(line({"--shots"}).mode(), Mode::game);
    EXPECT_EQ(line({"--shot", "a.png", "--help"}).mode(), Mode::help);
    EXPECT_EQ(line({"--selftest", "--devices"}).mode(), Mode::devices);
    EXPECT_EQ(line({"--Shot"}).mode(), Mode::game);
}

TEST(CommandLine, ValueFollowsTheFirstOccurrence) {
    const auto arguments = line({"--shot", "a.png", "--shot", "b.png", "--seed"});
    EXPECT_EQ(arguments.value("--shot"), "a.png");
    EXPECT_FALSE(arguments.value("--seed"));
    EXPECT_FALSE(arguments.value("--beach"));
}

TEST(CommandLine, ShortFormsAndEqualsSignsAreUnderstood) {
    EXPECT_EQ(line({"-h"}).mode(), Mode::help);
    EXPECT_EQ(line({"--seed", "3", "-v"}).mode(), Mode::version);
    EXPECT_EQ(line({"--shot", "-v"}).mode(), Mode::snapshot) << "a file of that name";
    EXPECT_EQ(line({"--shot=a=b.png", "--find=2"}).value("--shot"), "a=b.png");
    EXPECT_EQ(parsed({"--shot=a.png", "--coil=-1,2"}).coil, (PlotPoint{-1, 2}));
    EXPECT_THAT(line({"--selftest=2,5"}).arguments(), ElementsAre("--selftest", "2,5"));
    EXPECT_THAT(line({"--shot=a.png", "--nohud=no"}).complaints(), ElementsAre(HasSubstr("takes no value")));
    EXPECT_THAT(line({"--shto=a.png"}).complaints(), ElementsAre(HasSubstr("--shot?")));
    EXPECT_THAT(line({"-h", "-v", "--shot=x.png"}).complaints(), IsEmpty());
}

TEST(CommandLine, AnOptionThatNeedsAnotherSaysSo) {
    EXPECT_THAT(line({"--beach", "3"}).complaints(), ElementsAre(HasSubstr("add --shot FILE")));
    EXPECT_THAT(line({"--beach", "three"}).complaints(), ElementsAre(HasSubstr("add --shot FILE")))
        << "one sentence is enough";
    EXPECT_THAT(line({"--icons", "out", "--trail"}).complaints(), ElementsAre(HasSubstr("--trail has no")));
    EXPECT_THAT(line({"--shot", "a.png", "--fullscreen"}).complaints(),
                ElementsAre(HasSubstr("--fullscreen")));
    for (const auto& words : std::vector<std::vector<std::string>>{
             {"--seed", "3", "--fullscreen"}, {"--icon", "a.png", "--beach", "3"}, {"--select", "--help"}}) {
        EXPECT_THAT(line(words).complaints(), IsEmpty()) << words[0];
    }
}

TEST(CommandLine, TheHelpFitsAScreenAndTellsOfEveryOption) {
    const std::string help = CommandLine::help();
    EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 24);
    std::size_t longest = 0;
    for (std::size_t start = 0; start < help.size();) {
        const std::size_t end = help.find('\n', start);
        longest = std::max(longest, end - start);
        start = end + 1;
    }
    EXPECT_LE(longest, 80U);
    for (const char* option : {"--shot FILE",
                               "--icon FILE",
                               "--icons FOLDER",
                               "--size WxH",
                               "--beach N",
                               "--seed N",
                               "--elapse SECONDS",
                               "--find COUNT",
                               "--junk COUNT",
                               "--coil X,Y",
                               "--trail",
                               "--reveal SECONDS",
                               "--ping",
                               "--flood",
                               "--finish",
                               "--select",
                               "--nohud",
                               "--fullscreen",
                               "--selftest [BEACHES]",
                               "--devices",
                               "-h, --help",
                               "-v, --version"}) {
        EXPECT_THAT(help, HasSubstr(option));
    }
}

TEST(CommandLine, StrangersAreNamedWithWhatWasMeant) {
    EXPECT_THAT(line({"--shto", "--icons", "junk"}).complaints(), ElementsAre(HasSubstr("--shot?")));
    EXPECT_THAT(line({"--shot", "a.png", "--coil", "-1,2", "--nohud"}).complaints(), IsEmpty());
    EXPECT_THAT(line({"--selftest", "2,x"}).complaints(), IsEmpty());
    EXPECT_THAT(line({"2,x", "--selftest", "3"}).complaints(), ElementsAre(HasSubstr("2,x")));
    EXPECT_THAT(line({"--seed", "1", "extra"}).complaints(), ElementsAre(HasSubstr("extra")));
}

TEST(CommandLine, ValuesThatSayNothingAreNamed) {
    EXPECT_THAT(line({"--shot", "a.png", "--beach", "two", "--find", "3", "--coil", "0.5", "--seed", "-1"})
                    .complaints(),
                ElementsAre(HasSubstr("\"two\""), HasSubstr("--seed"), HasSubstr("--coil takes X,Y")));
    EXPECT_THAT(line({"--shot", "--beach", "3"}).complaints(), ElementsAre(HasSubstr("--shot takes FILE")));
    EXPECT_THAT(line({"--shot", "a.png", "--shot", "--nohud"}).complaints(), IsEmpty()) << "the first counts";
    EXPECT_THAT(line({"--shot", "a.png", "--seed"}).complaints(), ElementsAre(HasSubstr("nothing follows")));
    EXPECT_THAT(line({"--selftest", "--nohud"}).complaints(), IsEmpty());
    EXPECT_THAT(line({"--selftest", "--coil", "3"}).complaints(), IsEmpty()) << "beach 3";
}

TEST(Numbers, WholeTextsOnly) {
    EXPECT_EQ(parseInteger("+3"), 3);
    EXPECT_EQ(parseInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    for (const char* text : {"", "+", "3a", " 3", "3 ", "+-3", "9223372036854775808", "0x10", "3.0"}) {
        EXPECT_FALSE(parseInteger(text)) << text;
    }
    EXPECT_EQ(parseUnsigned("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_FALSE(parseUnsigned("-1"));
    EXPECT_EQ(parseNumber("-2.5e1"), -25.0);
    for (const char* text : {"nan", "inf", "1,5", "", "."}) EXPECT_FALSE(parseNumber(text)) << text;
}

TEST(SnapshotOptions, DefaultsAndGoodValues) {
    const SnapshotOptions plain = parsed({"--shot"});
    EXPECT_EQ(plain.path, "shot.png");
    EXPECT_EQ(plain.width, 1400);
    EXPECT_EQ(plain.height, 900);
    EXPECT_EQ(plain.beach, 1);
    EXPECT_TRUE(plain.hud);
    EXPECT_FALSE(plain.seed || plain.elapse || plain.coil || plain.reveal || plain.iconsFolder);

    const SnapshotOptions full =
        parsed({"--shot", "out/a.png", "--size",  "800x600x3", "--beach", "5",      "--seed",
                "7",      "--elapse",  "30.5",    "--find",    "3",       "--junk", "2",
                "--coil", "0.25,0.5",  "--trail", "--reveal",  "0.8",     "--ping", "--nohud"});
    EXPECT_EQ(full.path, "out/a.png");
    EXPECT_EQ(full.width, 800);
    EXPECT_EQ(full.height, 600);
    EXPECT_EQ(full.beach, 5);
    EXPECT_EQ(full.seed, 7U);
    EXPECT_EQ(full.elapse, 30.5);
    EXPECT_EQ(full.find, 3);
    EXPECT_EQ(full.junk, 2);
    EXPECT_EQ(full.coil, (PlotPoint{0.25, 0.5}));
    EXPECT_EQ(full.reveal, 0.8);
    EXPECT_TRUE(full.trail && full.ping);
    EXPECT_FALSE(full.hud || full.flood || full.finish || full.select);
}

TEST(SnapshotOptions, TheCloseUpKeepsItsCameraWhereverTheFileGoes) {
    const SnapshotOptions both = parsed({"--shot", "a.png", "--icon", "b.png"});
    EXPECT_TRUE(both.closeUp);
    EXPECT_FALSE(both.hud);
    EXPECT_EQ(both.path, "a.png");
    EXPECT_EQ(parsed({"--icon", "b.png"}).path, "b.png");
}

TEST(SnapshotOptions, OddValuesFallBack) {
    const SnapshotOptions odd = parsed({"--shot", "a.png", "--beach", "two", "--seed", "-1", "--elapse",
                                        "soon", "--find", "some", "--coil", "0.5", "--reveal", "nan"});
    EXPECT_EQ(odd.beach, 1);
    EXPECT_EQ(odd.find, 0);
    EXPECT_FALSE(odd.seed || odd.elapse || odd.coil || odd.reveal);
    EXPECT_EQ(parsed({"--shot", "a.png", "--size", "ax800xx600"}).width, 800);
    EXPECT_EQ(parsed({"--shot", "a.png", "--beach", "0"}).beach, 0);
}

TEST(SnapshotOptions, ImpossibleValuesAreRefusedWithAReason) {
    EXPECT_THAT(refused({"--shot", "a", "--size", "800"}), HasSubstr("two whole numbers"));
    EXPECT_THAT(refused({"--shot", "a", "--size", "0x600"}), HasSubstr("at least one point"));
    EXPECT_THAT(refused({"--shot", "a", "--find", "-1", "--reveal", "1"}), HasSubstr("--find"));
    EXPECT_THAT(refused({"--shot", "a", "--junk", "-1"}), HasSubstr("--junk"));
    EXPECT_THAT(refused({"--shot", "a", "--beach", "-3"}), HasSubstr("-3"));
    EXPECT_THAT(refused({"--shot", "a", "--coil", "1e308,0"}), HasSubstr("from 0 to 1; it was 1e308,0"));
    EXPECT_THAT(refused({"--shot", "a", "--coil", "0,-3"}), HasSubstr("--coil"));
    EXPECT_THAT(refused({"--shot", "a", "--reveal", "1e308"}), HasSubstr("--reveal takes seconds, 86400"));
    EXPECT_THAT(refused({"--shot", "a", "--elapse", "-1e9"}), HasSubstr("--elapse"));
}

TEST(SnapshotOptions, IconsCareForNothingElse) {
    EXPECT_EQ(parsed({"--icons", "out", "--size", "800", "--beach", "-3", "--find", "-1"}).iconsFolder,
              "out");
    EXPECT_FALSE(parsed({"--size", "64x40", "--icons"}).iconsFolder) << "without a folder it is a scene";
}

}  // namespace
}  // namespace gull
