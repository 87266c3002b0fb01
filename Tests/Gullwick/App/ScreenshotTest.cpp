#include "Gullwick/App/Screenshot.h"

#include "Engine/Language/Language.h"
#include "Engine/Raster/Png.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace gull {
namespace {

namespace fs = std::filesystem;

struct ScreenshotTest : testing::Test {
    TemporaryFolder home;
    std::map<std::string, std::string> variables{{"HOME", home.path().string()}};
    AppSettings::Environment environment = [this](const char* name) -> const char* {
        const auto found = variables.find(name);
        return found == variables.end() ? nullptr : found->second.c_str();
    };
    void choose(const std::string& list) {
        fs::create_directories(home.path() / ".config");
        writeText(home.path() / ".config" / "user-dirs.dirs", list);
    }
};

TEST_F(ScreenshotTest, GoesWhereTheDesktopKeepsPictures) {
    EXPECT_EQ(Screenshot::folder(environment), home.path() / "Pictures");
    choose("# a comment\nXDG_MUSIC_DIR=\"$HOME/Musik\"\nXDG_PICTURES_DIR=\"$HOME/Bilder\"\n");
    EXPECT_EQ(Screenshot::folder(environment), home.path() / "Bilder");
    choose("XDG_PICTURES_DIR=\"/mnt/pictures\"\n");
    EXPECT_EQ(Screenshot::folder(environment), "/mnt/pictures");
    for (const char* nonsense :
         {"XDG_PICTURES_DIR=\"somewhere\"", "XDG_PICTURES_DIR=\"", "#XDG_PICTURES_DIR=\"/x\"", ""}) {
        choose(nonsense);
        EXPECT_EQ(Screenshot::folder(environment), home.path() / "Pictures") << nonsense;
    }
}

TEST_F(ScreenshotTest, TwoInASecondAreTwoFiles) {
    Image image(8, 4);
    const fs::path folder = home.path() / "new" / "folder";
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(Language().tr(Screenshot::save(image, folder)), testing::HasSubstr("Picture saved: "));
    int files = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string bytes = readText(entry.path());
        const auto read = decodePng(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->width, 8);
        ++files;
    }
    EXPECT_EQ(files, 2);
}

TEST_F(ScreenshotTest, AFolderThatCannotBeMadeIsToldWithTheReason) {
    writeText(home.path() / "file", "in the way");
    EXPECT_THAT(Language().tr(Screenshot::save(Image(8, 4), home.path() / "file")),
                testing::HasSubstr("could not be saved: "));
    EXPECT_THAT(Language().tr(Screenshot::save(Image(8, 4), {})), testing::HasSubstr("no home folder"));
}

}  // namespace
}  // namespace gull
