#include "Engine/Language/Language.h"

#include "Engine/Language/Catalogue.h"
#include "Engine/Language/MoFile.h"
#include "Engine/Language/PluralRule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <string>

namespace gull {
namespace {

using namespace std::string_literals;

const std::string polish = moFile({
    {"",
     "Language: pl\nPlural-Forms: nplurals=3; plural=(n==1 ? 0 : n%10>=2 && n%10<=4 && (n%100<10 || "
     "n%100>=20) ? 1 : 2);\n"},
    {"Dig", "Kop"},
    {"key\4Return", "Enter"},
    {"{} of {}", "z {1} masz {0}"},
    {"Found: {}", "Znaleziono: {}"},
    {"Broken {}", "Zepsute {9}"},
    {"{} find\0{} finds"s, "{} łup\0{} łupy\0{} łupów"s},
});

struct LanguageTest : testing::Test {
    Catalogue catalogue{polish};
    Language language{"pl", catalogue};

    static std::string preferred(const std::map<std::string, std::string>& variables) {
        return Language::preferred([&](const char* name) {
                   const auto found = variables.find(name);
                   return found == variables.end() ? nullptr : found->second.c_str();
               })
            .code();
    }
};

TEST_F(LanguageTest, WhatACatalogueLacksComesOutInEnglish) {
    EXPECT_EQ(language.tr("Dig"), "Kop");
    EXPECT_EQ(language.tr("Ping"), "Ping");
    EXPECT_EQ(language.tr("Di"), "Di") << "not by its beginning";
    EXPECT_EQ(language.translated("Dig"), "Kop");
    EXPECT_EQ(Language().tr("Dig"), "Dig");
    EXPECT_EQ(language.trc("key", "Return"), "Enter");
    EXPECT_EQ(language.tr("Return"), "Return") << "in another meaning";
    EXPECT_EQ(language.translated(""), "") << "not the header";
}

TEST_F(LanguageTest, ValuesStandInTheTranslationsOrder) {
    EXPECT_EQ(language.tr("{} of {}", 2, 4), "z 4 masz 2");
    EXPECT_EQ(Language().tr("{} of {}", 2, 4), "2 of 4");
    EXPECT_EQ(language.tr("Found: {}", message("Dig")), "Znaleziono: Kop");
    EXPECT_EQ(language.tr("Found: {}", "Dig"), "Znaleziono: Dig") << "a text stands as it is";
    EXPECT_EQ(language.tr(message("Found: {}", marked("Dig"))), "Znaleziono: Kop");
    EXPECT_EQ(Language().tr("{:.0f} s, {:02}", 5.0, 7), "5 s, 07");
    EXPECT_EQ(Language().tr("{{}} {}", 1), "{} 1");
    EXPECT_EQ(language.tr("Broken {}", 3), "Broken 3") << "a wrong placeholder must not end the game";
}

TEST_F(LanguageTest, CountsPickTheirForm) {
    const auto finds = [](const Language& in, int n) { return in.trn("{} find", "{} finds", n, n); };
    EXPECT_EQ(finds(language, 1), "1 łup");
    EXPECT_EQ(finds(language, 3), "3 łupy");
    EXPECT_EQ(finds(language, 12), "12 łupów");
    EXPECT_EQ(finds(language, 22), "22 łupy");
    EXPECT_EQ(finds(Language(), 1), "1 find");
    EXPECT_EQ(finds(Language(), 0), "0 finds");

    EXPECT_EQ(PluralRule::form("n > 1", 1), 0);
    EXPECT_EQ(PluralRule::form("!(n % 2) + 2 * 3 - n / 2", 4), 5);
    EXPECT_EQ(PluralRule::form("n != 1", -1), 0);
    EXPECT_EQ(PluralRule::inHeader("Language: de\n"), "n != 1");
    for (const char* wrong : {"", "n >", "n % 0", "(n", "n n", "m", "1 ? 2", "99999999999999999999"}) {
        EXPECT_THROW(PluralRule::form(wrong, 1), std::invalid_argument) << wrong;
    }
    EXPECT_THROW(PluralRule::form(std::string(100000, '('), 1), std::invalid_argument);
}

TEST_F(LanguageTest, ADamagedCatalogueIsRefused) {
    const auto read = [](std::string bytes) { Catalogue{bytes}; };
    EXPECT_THROW(read(""), std::invalid_argument);
    EXPECT_THROW(read("no catalogue, but long enough to be one"), std::invalid_argument);
    for (const std::size_t size : {19u, 27u, 100u}) {
        EXPECT_THROW(read(polish.substr(0, size)), std::invalid_argument) << size;
    }
    std::string tooMany = polish;
    tooMany[9] = '\x7f';  // the number of messages
    EXPECT_THROW(read(tooMany), std::invalid_argument);
    EXPECT_THROW(read(moFile({{"", "Plural-Forms: nplurals=2; plural=nonsense;\n"}})), std::invalid_argument);
}

TEST_F(LanguageTest, TheEnvironmentIsReadAsGettextReadsIt) {
    EXPECT_EQ(preferred({}), "en");
    EXPECT_EQ(preferred({{"LANG", "de_DE.UTF-8"}}), "de");
    EXPECT_EQ(preferred({{"LANG", "de_AT@euro"}}), "de");
    EXPECT_EQ(preferred({{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}}), "fr");
    EXPECT_EQ(preferred({{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}, {"LC_ALL", "es_ES"}}), "es");
    EXPECT_EQ(preferred({{"LANG", "de_DE"}, {"LC_ALL", ""}}), "de") << "empty is not set";
    EXPECT_EQ(preferred({{"LANG", "tlh_KL.UTF-8"}}), "en");

    EXPECT_EQ(preferred({{"LANG", "de_DE"}, {"LANGUAGE", "fr:es"}}), "fr");
    EXPECT_EQ(preferred({{"LANG", "de_DE"}, {"LANGUAGE", "tlh:es_MX:fr"}}), "es");
    EXPECT_EQ(preferred({{"LANG", "de_DE"}, {"LANGUAGE", "en_GB:fr"}}), "en");
    EXPECT_EQ(preferred({{"LANG", "de_DE"}, {"LANGUAGE", "tlh"}}), "de");
    EXPECT_EQ(preferred({{"LANG", "C.UTF-8"}, {"LANGUAGE", "ja"}}), "ja") << "a bare Debian";
    EXPECT_EQ(preferred({{"LANGUAGE", "ja"}}), "ja");
    EXPECT_EQ(preferred({{"LC_ALL", "C"}, {"LANG", "de_DE"}, {"LANGUAGE", "fr"}}), "en")
        << "what scripts set to read English";
    EXPECT_EQ(preferred({{"LANG", "POSIX"}, {"LANGUAGE", "fr"}}), "en");
}

TEST_F(LanguageTest, EveryLanguageHasItsOwnName) {
    std::map<std::string, std::string> names;
    for (const Language& each : Language::all()) names[each.code()] = each.ownName();
    EXPECT_THAT(names, testing::IsSupersetOf(std::map<std::string, std::string>{
                           {"en", "English"},
                           {"de", "Deutsch"},
                           {"es", "Español"},
                           {"fr", "Français"},
                           {"ja", "日本語"},
                       }));
    EXPECT_EQ(Language::all().front(), Language()) << "English first";
    EXPECT_EQ(Language::find("de")->tr("Dig"), "Graben");
    EXPECT_FALSE(Language::find("").has_value());
}

}  // namespace
}  // namespace gull
