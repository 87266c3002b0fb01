#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace gull {
namespace {

namespace fs = std::filesystem;

/// Every option named in a string of the program's own sources.
std::set<std::string> optionsOfTheProgram() {
    static const std::regex option("\"--([a-z-]+)\"");
    std::set<std::string> options;
    for (const auto& entry : fs::directory_iterator("Sources/Gullwick/App")) {
        const std::string text = readText(entry.path());
        for (std::sregex_iterator match(text.begin(), text.end(), option), end; match != end; ++match) {
            options.insert((*match)[1]);
        }
    }
    return options;
}

TEST(ManualPage, tellsOfEveryOption) {
    const std::string manual = readText("Packaging/gullwick.6");
    const auto options = optionsOfTheProgram();
    ASSERT_GT(options.size(), 15u) << "read from " << fs::current_path();
    for (const std::string& name : options) {
        EXPECT_TRUE(std::regex_search(manual, std::regex("Fl -" + name + "\\b"))) << "--" << name;
    }
}

}  // namespace
}  // namespace gull
