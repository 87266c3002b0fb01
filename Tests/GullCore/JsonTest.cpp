#include "GullCore/Json.h"

#include <gtest/gtest.h>
#include <string>

namespace gull {
namespace {

using namespace std::string_literals;

/// The star count that a progress file with this number text gives beach 1.
std::optional<std::int64_t> starsWritten(const std::string& number) {
    const auto progress = Json::readProgress(R"({"stars":{"1":)" + number + R"(},"bestHaul":{}})");
    if (!progress) return std::nullopt;
    return progress->stars.at(1);
}

/// The beach number that a member of this name denotes.
std::optional<std::int64_t> beachNamed(const std::string& name) {
    const auto progress = Json::readProgress(R"({"stars":{},"bestHaul":{")" + name + R"(":7}})");
    if (!progress) return std::nullopt;
    return progress->bestHaul.begin()->first;
}

TEST(Json, recordsComeBackBitForBit) {
    const PlotPoint point{0.1 + 0.2, 1.0 / 3};
    EXPECT_EQ(Json::readPlotPoint(Json::write(point)), point);
    EXPECT_EQ(Json::write(PlotPoint{0.25, 0.5}), R"({"x":0.25,"y":0.5})");

    const BuriedItem item{3, ItemKind::ring, {0.41, 0.62}, 0.12};
    EXPECT_EQ(Json::write(item), R"({"id":3,"kind":"ring","at":{"x":0.41,"y":0.62},"depth":0.12})");
    EXPECT_EQ(Json::readBuriedItem(Json::write(item)), item);
    EXPECT_EQ(Json::readBuriedItem(R"( {"depth":0, "id":3.0, "at":{"y":1,"x":0,"z":9}, "kind":"foil"} )"),
              (BuriedItem{3, ItemKind::foil, {0, 1}, 0}));
}

TEST(Json, aRecordIsReadWholeOrNotAtAll) {
    for (const char* text : {"", "{}", "[]", "7", R"({"x":1})", R"({"x":1,"y":"2"})", R"({"x":1,"y":null})",
                             R"({"x":1,"y":true})", R"({"x":1,"y":2)", R"({"x":1,"y":2} x)", R"([1,2])"}) {
        EXPECT_FALSE(Json::readPlotPoint(text)) << text;
    }
    for (const char* text :
         {R"({"id":3,"kind":"Ring","at":{"x":0,"y":0},"depth":0})",
          R"({"id":3,"kind":1,"at":{"x":0,"y":0},"depth":0})", R"({"id":3,"at":{"x":0,"y":0},"depth":0})",
          R"({"id":3,"kind":"ring","at":{"x":0},"depth":0})",
          R"({"id":3,"kind":"ring","at":[0,0],"depth":0})",
          R"({"id":3.5,"kind":"ring","at":{"x":0,"y":0},"depth":0})",
          R"({"id":3,"kind":"ring","at":{"x":0,"y":0}})"}) {
        EXPECT_FALSE(Json::readBuriedItem(text)) << text;
    }
}

TEST(Json, wholeNumbersInAnyNotationUpTo64Bits) {
    EXPECT_EQ(starsWritten("3"), 3);
    EXPECT_EQ(starsWritten("3.0"), 3);
    EXPECT_EQ(starsWritten("3e0"), 3);
    EXPECT_EQ(starsWritten("30E-1"), 3);
    EXPECT_EQ(starsWritten("-0"), 0);
    EXPECT_EQ(starsWritten("-0.0"), 0);
    EXPECT_EQ(starsWritten("-7"), -7) << "the range is nobody's business here";
    EXPECT_EQ(starsWritten("9007199254740993"), 9007199254740993) << "2^53 + 1";
    EXPECT_EQ(starsWritten("9223372036854775807"), INT64_MAX);
    EXPECT_EQ(starsWritten("-9223372036854775808"), INT64_MIN);
    for (const char* number :
         {"9223372036854775808", "-9223372036854775809", "18446744073709551616", "1e19", "1e999", "3.5", "03",
          "+3", "0x3", "NaN", "\"3\"", "true", "null", "[3]", ""}) {
        EXPECT_FALSE(starsWritten(number)) << number;
    }
}

TEST(Json, beachesAreNamedInDecimalWithAnOptionalSign) {
    EXPECT_EQ(beachNamed("8"), 8);
    EXPECT_EQ(beachNamed("01"), 1);
    EXPECT_EQ(beachNamed("+1"), 1);
    EXPECT_EQ(beachNamed("-0"), 0);
    EXPECT_EQ(beachNamed("-9223372036854775808"), INT64_MIN);
    for (const char* name : {"", "+", "-", "+-1", "-+1", "--1", " 1", "1 ", "1.0", "1e0", "0x1", "one",
                             "1\\u0000", "\u0661", "9223372036854775808"}) {
        EXPECT_FALSE(beachNamed(name)) << name;
    }
}

TEST(Json, aProgressFileIsTwoObjectsInUtf8) {
    EXPECT_EQ(Json::readProgress(R"({"bestHaul":{"2":5},"later":[{"deep":[]}],"stars":{"2":1}})"),
              (CampaignProgress{{{2, 1}}, {{2, 5}}}));
    const std::string good = R"({"stars":{},"bestHaul":{}})";
    ASSERT_TRUE(Json::readProgress(good));

    std::string utf16;
    for (const char c : good) utf16 += {c, '\0'};
    for (const std::string& text :
         {""s, R"({"stars":{}})"s, R"({"stars":{},"bestHaul":null})"s, R"({"stars":[],"bestHaul":{}})"s,
          "[" + good + "]", good + good, good.substr(0, good.size() - 1), utf16, "\xff\xfe" + utf16,
          "{\"\xff\":1," + good.substr(1), "{\"a\":\"\xc3\x28\"," + good.substr(1),
          "{\"a\":\"\xed\xa0\x80\"," + good.substr(1), good + "\0"s, std::string(100'000, '[')}) {
        EXPECT_FALSE(Json::readProgress(text)) << text.substr(0, 60);
    }
}

}  // namespace
}  // namespace gull
