#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

namespace gull {
namespace {

using testing::HasSubstr;

std::string found(const std::string& file, const char* pattern) {
    const std::string text = readText(file);
    std::smatch match;
    return std::regex_search(text, match, std::regex(pattern)) ? match[1].str() : file + " has none";
}

TEST(Versions, areTheSameWhereverAReleaseIsNamed) {
    const std::string version = found("CMakeLists.txt", "project\\(Gullwick VERSION ([0-9.]+)");
    const std::string day = found("CHANGELOG.md", "\n## [0-9.]+ \\(([0-9-]+)\\)");
    EXPECT_EQ(found("CHANGELOG.md", "\n## ([0-9.]+)"), version);
    EXPECT_EQ(found("Packaging/changelog", "^gullwick \\(([0-9.]+)\\)"), version);
    EXPECT_EQ(found("Packaging/gullwick.metainfo.xml.in", "<release version=\"([0-9.]+)\""), version);
    EXPECT_EQ(found("Packaging/gullwick.metainfo.xml.in", "<release [^>]*date=\"([0-9-]+)\""), day);
}

TEST(Versions, theNameOfTheApplicationIsTheSameInTheFlatpakManifest) {
    const std::string id = found("CMakeLists.txt", "set\\(GULL_APP_ID ([a-z.]+)\\)");
    EXPECT_THAT(readText("Packaging/flatpak/" + id + ".yml"), HasSubstr("\nid: " + id + "\n"));
}

}  // namespace
}  // namespace gull
