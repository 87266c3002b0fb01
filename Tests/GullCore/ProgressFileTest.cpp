#include "GullCore/ProgressFile.h"

#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gull {
namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;

const CampaignProgress earlier{{{1, 3}, {2, 1}}, {{1, 220}, {2, 250}}};
const CampaignProgress earned{{{1, 1}, {3, 2}}, {{1, 300}, {3, 90}}};
const CampaignProgress both{{{1, 3}, {2, 1}, {3, 2}}, {{1, 300}, {2, 250}, {3, 90}}};

class ProgressFileTest : public testing::Test {
  protected:
    TemporaryFolder folder_;
    fs::path path_ = folder_ / "Gullwick/progress.json";

    /// What `action` says on standard error.
    template <typename F>
    static std::string said(F&& action) {
        testing::internal::CaptureStderr();
        action();
        return testing::internal::GetCapturedStderr();
    }
    /// The file cannot be written: a folder is in the way of the new one.
    void block() { fs::create_directories(folder_ / "Gullwick/.progress.json.new/in the way"); }
    void unblock() { fs::remove_all(folder_ / "Gullwick/.progress.json.new"); }
};

TEST_F(ProgressFileTest, twoGamesAtOnceKeepBothTheirResults) {
    earlier.save(path_);
    ProgressFile first(path_), second(path_);
    CampaignProgress mine = first.load(), theirs = second.load();
    theirs.record(2, 3, 100);
    second.save(theirs);
    mine.record(3, 1, 50);
    mine = first.save(mine);
    EXPECT_EQ(mine, (CampaignProgress{{{1, 3}, {2, 3}, {3, 1}}, {{1, 220}, {2, 250}, {3, 50}}}));
    EXPECT_EQ(CampaignProgress::load(path_), mine);
    EXPECT_EQ(fs::status(path_.parent_path()).permissions(), fs::perms(0700));
}

TEST_F(ProgressFileTest, aWholeOrEmptyFileIsNotTakenForDamaged) {
    fs::create_directories(path_.parent_path());
    for (const char* text : {"", R"({"stars":{"1":3},"bestHaul":{}})"}) {
        writeText(path_, text);
        EXPECT_EQ(said([&] {
                      ProgressFile file(path_);
                      file.load();
                      file.save(both);
                  }),
                  "");
        EXPECT_FALSE(fs::exists(path_.string() + ".damaged")) << text;
    }
}

TEST_F(ProgressFileTest, eraseDoesNotMerge) {
    earlier.save(path_);
    ProgressFile file(path_);
    file.erase();
    EXPECT_EQ(CampaignProgress::load(path_), CampaignProgress{});
    earlier.save(path_);
    EXPECT_EQ(file.save(earned), both) << "what comes after it is merged as ever";

    earlier.save(path_);
    block();
    testing::internal::CaptureStderr();
    file.erase();
    CampaignProgress after;
    after.record(1, 1, 10);
    file.save(after);
    unblock();
    EXPECT_EQ(file.retry(), after) << "an erasure that failed is made good with what came after it";
    EXPECT_EQ(CampaignProgress::load(path_), after);
    testing::internal::GetCapturedStderr();
}

TEST_F(ProgressFileTest, aDamagedFileIsNeverLost) {
    fs::create_directories(path_.parent_path());
    writeText(path_, "precious");
    ProgressFile file(path_);
    EXPECT_THAT(said([&] { EXPECT_EQ(file.load(), CampaignProgress{}); }), HasSubstr("is damaged"));
    EXPECT_FALSE(file.isOwed());

    const fs::path aside = path_.string() + ".damaged",
                   inTheWay = folder_ / "Gullwick/.progress.json.damaged.new";
    fs::create_directories(inTheWay / "x");
    EXPECT_THAT(said([&] { file.save(earned); }), HasSubstr("cannot be set aside"));
    EXPECT_EQ(said([&] { file.save(earned); }), "") << "told once";
    EXPECT_EQ(readText(path_), "precious");
    earned.save(path_);
    EXPECT_EQ(readText(path_), "precious");

    fs::remove_all(inTheWay);
    EXPECT_THAT(said([&] { EXPECT_EQ(file.retry(), earned); }), HasSubstr("is saved now"));
    EXPECT_EQ(readText(aside), "precious");
    EXPECT_EQ(CampaignProgress::load(path_), earned);
    EXPECT_FALSE(file.retry());
    EXPECT_EQ(said([&] { file.save(both); }), "") << "all is well again";
}

TEST_F(ProgressFileTest, whatCannotBeReadIsKeptAndMergedOnceItCan) {
    fs::create_directories(path_);  // a folder cannot be read as a file
    ProgressFile file(path_);
    EXPECT_THAT(said([&] { EXPECT_EQ(file.load(), CampaignProgress{}); }),
                HasSubstr("cannot be read: not a regular file; results are kept in memory"));
    EXPECT_TRUE(file.isOwed()) << "what it holds is still to be read";
    EXPECT_EQ(said([&] { EXPECT_EQ(file.save(earned), earned); }), "");
    EXPECT_TRUE(fs::is_directory(path_));

    fs::remove(path_);
    earlier.save(path_);
    EXPECT_THAT(said([&] { EXPECT_EQ(file.retry(), both); }), HasSubstr("is saved now"));
    EXPECT_EQ(CampaignProgress::load(path_), both);
    EXPECT_FALSE(file.isOwed());
}

TEST_F(ProgressFileTest, aFailedSaveIsToldOnceAndMadeGoodAtTheEnd) {
    block();
    EXPECT_THAT(said([&] {
                    ProgressFile file(path_);
                    file.load();
                    EXPECT_EQ(file.save(earlier), earlier);
                    EXPECT_TRUE(file.isOwed());
                    file.save(both);
                    EXPECT_FALSE(file.retry());
                    unblock();
                }),
                testing::AllOf(testing::ContainsRegex("^[^\n]*is not saved[^\n]*\n[^\n]*is saved now\n$")));
    EXPECT_EQ(CampaignProgress::load(path_), both);
}

TEST_F(ProgressFileTest, nothingIsWrittenThatStandsThereAlready) {
    ProgressFile file(path_);
    file.save(file.load());
    EXPECT_TRUE(fs::exists(path_));
    earlier.save(path_);
    const auto before = fs::last_write_time(path_);
    file.save(earlier);
    EXPECT_EQ(fs::last_write_time(path_), before);
}

}  // namespace
}  // namespace gull
