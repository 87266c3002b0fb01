#include "Engine/Files/SmallFile.h"

#include "Engine/Files/FileLock.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <fstream>
#include <optional>
#include <vector>

namespace gull {
namespace {

namespace fs = std::filesystem;

class SmallFileTest : public testing::Test {
  protected:
    TemporaryFolder folder_;

    std::size_t countFiles() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_.path()), {}));
    }
};

TEST_F(SmallFileTest, whatWasWrittenIsRead) {
    const std::string bytes("a\0b\r\n\xff", 6);
    const fs::path file = folder_ / "f";
    ASSERT_TRUE(SmallFile::replace(file, bytes));
    EXPECT_EQ(SmallFile::read(file).bytes, bytes);
    ASSERT_TRUE(SmallFile::replace(file, ""));
    EXPECT_EQ(SmallFile::read(file).bytes, "");
    const std::string large(100'000, 'x');
    ASSERT_TRUE(SmallFile::replace(file, large));
    EXPECT_EQ(SmallFile::read(file).bytes, large);
    EXPECT_EQ(countFiles(), 1u) << "no temporary file stays behind";
}

TEST_F(SmallFileTest, missingParentFoldersAreMade) {
    const fs::path file = folder_ / "a/b/c/f";
    ASSERT_TRUE(SmallFile::replace(file, "x"));
    EXPECT_EQ(readText(file), "x");
}

TEST_F(SmallFileTest, aRelativeNameStandsInTheWorkingFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder_.path());
    const auto outcome = SmallFile::replace("f", "x");
    fs::current_path(before);
    EXPECT_TRUE(outcome) << outcome.failure;
    EXPECT_EQ(readText(folder_ / "f"), "x");
}

// Whoever still holds the old file keeps reading the old bytes: it was replaced, not overwritten.
TEST_F(SmallFileTest, theOldFileIsNeverHalfOverwritten) {
    const fs::path file = folder_ / "f";
    writeText(file, "old");
    std::ifstream holder(file);
    ASSERT_TRUE(SmallFile::replace(file, "new"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(holder), {}), "old");
    EXPECT_EQ(readText(file), "new");
}

TEST_F(SmallFileTest, permissionsAndLinksStay) {
    const fs::path file = folder_ / "real";
    writeText(file, "old");
    fs::permissions(file, fs::perms(0640));
    fs::create_symlink("real", folder_ / "link");
    ASSERT_TRUE(SmallFile::replace(folder_ / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
    EXPECT_EQ(readText(file), "new");
    fs::create_symlink("link", folder_ / "link to the link");
    ASSERT_TRUE(SmallFile::replace(folder_ / "link to the link", "newer"));
    EXPECT_EQ(readText(file), "newer");
    fs::create_symlink("none/yet", folder_ / "link to nothing");
    ASSERT_TRUE(SmallFile::replace(folder_ / "link to nothing", "first"));
    EXPECT_EQ(readText(folder_ / "none/yet"), "first");
    fs::create_symlink("circle", folder_ / "circle");
    EXPECT_FALSE(SmallFile::replace(folder_ / "circle", "x"));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));

    const mode_t before = ::umask(027);
    const auto outcome = SmallFile::replace(folder_ / "fresh", "x");
    ::umask(before);
    ASSERT_TRUE(outcome);
    EXPECT_EQ(fs::status(folder_ / "fresh").permissions(), fs::perms(0640)) << "as any new file";
}

TEST_F(SmallFileTest, whatAKilledProgramLeftIsTakenAway) {
    for (const char* name : {".f.new", ".g.new"}) writeText(folder_ / name, "half a fi");
    ASSERT_TRUE(SmallFile::replace(folder_ / "f", "x"));
    EXPECT_EQ(readText(folder_ / "f"), "x");
    EXPECT_FALSE(fs::exists(folder_ / ".f.new"));
    EXPECT_TRUE(fs::exists(folder_ / ".g.new")) << "that belongs to another file";
    fs::create_directories(folder_ / ".h.new/in use");
    EXPECT_FALSE(SmallFile::replace(folder_ / "h", "x"));
    EXPECT_FALSE(fs::exists(folder_ / "h"));
}

TEST_F(SmallFileTest, nothingSetAsideIsLostToTheNext) {
    for (const char* bytes : {"one", "two", "three"}) ASSERT_TRUE(SmallFile::setAside(folder_ / "f", bytes));
    EXPECT_EQ(readText(folder_ / "f.damaged"), "one");
    EXPECT_EQ(readText(folder_ / "f.damaged2"), "two");
    EXPECT_EQ(readText(folder_ / "f.damaged3"), "three");
}

TEST_F(SmallFileTest, privateFoldersAreForTheUserAlone) {
    SmallFile::makePrivateFolders(folder_ / "a/b/f");
    for (const char* made : {"a", "a/b"})
        EXPECT_EQ(fs::status(folder_ / made).permissions(), fs::perms(0700)) << made;
    fs::create_symlink("elsewhere/f", folder_ / "link");
    SmallFile::makePrivateFolders(folder_ / "link");
    EXPECT_EQ(fs::status(folder_ / "elsewhere").permissions(), fs::perms(0700));
}

TEST_F(SmallFileTest, aLockKeepsChangesOfSeveralProgramsApart) {
    constexpr int programs = 3, changes = 40;
    const fs::path file = folder_ / "count";
    fs::create_symlink("count", folder_ / "link");
    std::vector<pid_t> children;
    for (int i = 0; i < programs; ++i) {
        children.push_back(::fork());
        if (children.back() != 0) continue;
        for (int change = 0; change < changes; ++change) {
            std::optional<FileLock> lock;
            do lock.emplace(i == 0 ? folder_ / "link" : file);
            while (!lock->isHeld());
            const auto before = SmallFile::read(file).bytes.value_or("0");
            SmallFile::replace(file, std::to_string(std::stoi(before) + 1));
        }
        ::_exit(0);
    }
    for (const pid_t child : children) ::waitpid(child, nullptr, 0);
    EXPECT_EQ(readText(file), std::to_string(programs * changes));
    EXPECT_EQ(countFiles(), 2U) << "no lock file stays behind";
}

TEST_F(SmallFileTest, whoeverHoldsALockTooLongIsIgnored) {
    const FileLock first(folder_ / "f");
    ASSERT_TRUE(first.isHeld());
    EXPECT_FALSE(FileLock(folder_ / "f").isHeld());
    EXPECT_FALSE(FileLock("/proc/none/f").isHeld()) << "no such folder";
}

TEST_F(SmallFileTest, whatIsNoRegularFileIsNeitherReadNorReplaced) {
    fs::create_directory(folder_ / "folder");
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    for (const fs::path& file : {folder_ / "folder", folder_ / "pipe", fs::path("/dev/null")}) {
        const auto outcome = SmallFile::replace(file, "x");
        EXPECT_FALSE(outcome) << file;
        const auto contents = SmallFile::read(file);
        EXPECT_FALSE(contents.bytes) << file;
        EXPECT_FALSE(contents.failure.empty());
        EXPECT_FALSE(contents.isMissing);
    }
    EXPECT_TRUE(fs::is_fifo(folder_ / "pipe"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(countFiles(), 2u);
}

TEST_F(SmallFileTest, failuresSayWhy) {
    writeText(folder_ / "file", "x");
    const auto below = SmallFile::replace(folder_ / "file/f", "x");
    EXPECT_NE(below.failure.find("Not a directory"), std::string::npos) << below.failure;
    EXPECT_FALSE(SmallFile::replace("", "x"));
    EXPECT_FALSE(SmallFile::replace(folder_ / "file/", "x"));
    EXPECT_EQ(readText(folder_ / "file"), "x");

    const auto missing = SmallFile::read(folder_ / "missing");
    EXPECT_TRUE(missing.isMissing);
    EXPECT_EQ(missing.failure, "No such file or directory");

    writeText(folder_ / "huge", "");
    fs::resize_file(folder_ / "huge", SmallFile::largest + 1);
    EXPECT_EQ(SmallFile::read(folder_ / "huge").failure, "too large");
}

}  // namespace
}  // namespace gull
