#include "Engine/Language/PoFile.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace gull {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

/// A command's whole output, and its status if that is not 0.
std::string run(const std::string& command) {
    const TemporaryFolder folder;
    const fs::path output = folder / "output";
    const int status = std::system((command + " >" + output.string() + " 2>&1").c_str());
    return readText(output) + (status == 0 ? "" : "status " + std::to_string(status) + "\n");
}

/// What a catalogue lacks compared with `pot`, in gettext's own judgement: missing, untranslated and fuzzy
/// messages, a broken header, plural forms; texts that are no longer in the sources; and placeholders that
/// differ from the English.
std::string faults(const fs::path& po, const fs::path& pot) {
    std::string found = run("msgcmp " + po.string() + " " + pot.string()) +
                        run("msgfmt --check --output-file=/dev/null " + po.string());
    for (const PoMessage& message : readPo(po.string())) {
        for (const std::string& translation : message.translations) {
            if (placeholders(translation) != placeholders(message.english))
                found += "placeholders differ: " + message.english + " / " + translation + "\n";
            if (translation.empty() != message.english.empty() ||
                translation.starts_with(' ') != message.english.starts_with(' '))
                found += "blanks differ: " + message.english + "\n";
        }
    }
    return found;
}

TEST(Translations, EveryCatalogueIsComplete) {
    const TemporaryFolder folder;
    const fs::path pot = folder / "gullwick.pot";
    ASSERT_EQ(run("cmake/texts.sh template " + pot.string()), "");
    ASSERT_GT(readPo(pot.string()).size(), 100U);
    int catalogues = 0;
    for (const auto& entry : fs::directory_iterator("Translations")) {
        if (entry.path().extension() != ".po") continue;
        ++catalogues;
        EXPECT_THAT(faults(entry.path(), pot), IsEmpty())
            << entry.path() << ": run cmake --build build --target translations, then translate what it left "
            << "empty or marked fuzzy";
    }
    EXPECT_GE(catalogues, 4);
}

TEST(Translations, WhatIsWrongWithACatalogueIsFound) {
    const TemporaryFolder folder;
    const std::string header =
        "msgid \"\"\nmsgstr \"\"\n\"Content-Type: text/plain; charset=UTF-8\\n\"\n"
        "\"Content-Transfer-Encoding: 8bit\\n\"\n\"MIME-Version: 1.0\\n\"\n\"Language: de\\n\"\n"
        "\"Project-Id-Version: x\\n\"\n\"PO-Revision-Date: 2026-01-01 00:00+0000\\n\"\n"
        "\"Last-Translator: x\\n\"\n\"Language-Team: x\\n\"\n";
    const fs::path pot = folder / "texts.pot";
    const fs::path po = folder / "de.po";
    writeText(pot, header + "\nmsgid \"{} of {}\"\nmsgstr \"\"\n\nmsgid \"Dig\"\nmsgstr \"\"\n");
    const auto faultsOf = [&](const std::string& messages) {
        writeText(po, header + messages);
        return faults(po, pot);
    };
    const std::string right = "\nmsgid \"{} of {}\"\nmsgstr \"{1}: {0}\"\n";
    EXPECT_THAT(faultsOf(right + "\nmsgid \"Dig\"\nmsgstr \"Graben\"\n"), IsEmpty());
    EXPECT_THAT(faultsOf(right + "\nmsgid \"Dig\"\nmsgstr \"\"\n"), HasSubstr("untranslated"));
    EXPECT_THAT(faultsOf(right), HasSubstr("used but not defined"));
    EXPECT_THAT(faultsOf(right + "\n#, fuzzy\nmsgid \"Dig\"\nmsgstr \"Graben\"\n"),
                HasSubstr("needs to be reviewed"));
    EXPECT_THAT(faultsOf(right + "\nmsgid \"Dig\"\nmsgstr \"Graben\"\n\nmsgid \"Old\"\nmsgstr \"Alt\"\n"),
                HasSubstr("not used"));
    for (const char* wrong : {"{}", "{} {} {}", "{0} {0}", "{:02} {}", "{0} {1", "} {0} {1}"}) {
        EXPECT_THAT(faultsOf("\nmsgid \"{} of {}\"\nmsgstr \"" + std::string(wrong) +
                             "\"\n\nmsgid \"Dig\"\nmsgstr \"Graben\"\n"),
                    HasSubstr("placeholders differ"))
            << wrong;
    }
}

}  // namespace
}  // namespace gull
