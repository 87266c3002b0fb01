#include "GullCore/Progress.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

namespace gull {
namespace {

TEST(CampaignProgress, freshProgressOpensTheFirstBeachOnly) {
    const CampaignProgress fresh;
    EXPECT_TRUE(fresh.isUnlocked(1) && fresh.isUnlocked(0) && fresh.isUnlocked(INT64_MIN));
    EXPECT_FALSE(fresh.isUnlocked(2));
    EXPECT_EQ(fresh.highestUnlocked(), 1);
    EXPECT_EQ(fresh.totalStars(), 0);
}

TEST(CampaignProgress, aStarOpensTheNextBeachWhateverTheGaps) {
    EXPECT_EQ((CampaignProgress{{{1, 1}}, {}}.highestUnlocked()), 2);
    CampaignProgress progress{{{3, 1}, {5, 0}, {6, -2}}, {}};
    EXPECT_TRUE(progress.isUnlocked(4));
    EXPECT_FALSE(progress.isUnlocked(2));
    EXPECT_FALSE(progress.isUnlocked(6)) << "an entry of 0 is no star";
    EXPECT_EQ(progress.highestUnlocked(), 4);
    progress.stars[8] = 3;
    EXPECT_TRUE(progress.isUnlocked(9));
    EXPECT_EQ(progress.highestUnlocked(), 4) << "there is no ninth beach to open";
    progress.stars[7] = 1;
    EXPECT_EQ(progress.highestUnlocked(), 8);
}

TEST(CampaignProgress, totalStopsAtTheEndOfItsRange) {
    EXPECT_EQ((CampaignProgress{{{1, 3}, {2, 1}}, {}}.totalStars()), 4);
    EXPECT_EQ((CampaignProgress{{{1, INT64_MAX}, {2, 1}}, {}}.totalStars()), INT64_MAX);
    EXPECT_EQ((CampaignProgress{{{1, INT64_MIN}, {2, -1}}, {}}.totalStars()), INT64_MIN);
}

TEST(CampaignProgress, recordKeepsTheBestOfEach) {
    CampaignProgress progress;
    EXPECT_FALSE(progress.record(1, 0, 500)) << "a failed beach leaves nothing";
    EXPECT_EQ(progress, CampaignProgress{});

    EXPECT_TRUE(progress.record(1, 2, 0)) << "a first pass is a best, even with nothing in the bag";
    EXPECT_FALSE(progress.record(1, 3, 0)) << "equal haul, more stars";
    EXPECT_EQ(progress, (CampaignProgress{{{1, 3}}, {{1, 0}}}));

    EXPECT_TRUE(progress.record(1, 1, 170));
    EXPECT_FALSE(progress.record(1, 1, 100));
    EXPECT_EQ(progress, (CampaignProgress{{{1, 3}}, {{1, 170}}}));

    EXPECT_FALSE(progress.record(2, 1, -1));
    EXPECT_EQ(progress.bestHaul.count(2), 0u);
    EXPECT_EQ(progress.stars.at(2), 1);
}

TEST(CampaignProgress, comesBackFromItsFile) {
    const TemporaryFolder folder;
    const auto file = folder / "new/folder/progress.json";
    const CampaignProgress progress{{{1, 3}, {2, 1}}, {{1, 220}, {2, 250}}};
    progress.save(file);
    EXPECT_EQ(readText(file), R"({"stars":{"1":3,"2":1},"bestHaul":{"1":220,"2":250}})");
    EXPECT_EQ(CampaignProgress::load(file), progress);
    CampaignProgress{}.save(file);
    EXPECT_EQ(readText(file), R"({"stars":{},"bestHaul":{}})");
}

TEST(CampaignProgress, aDamagedOrUnreadableFileMeansAFreshStartAndIsLeftAlone) {
    const TemporaryFolder folder;
    const auto file = folder / "progress.json";
    writeText(file, R"({"stars":{"1":3}})");
    EXPECT_EQ(CampaignProgress::load(file), CampaignProgress{});
    EXPECT_EQ(readText(file), R"({"stars":{"1":3}})");

    EXPECT_EQ(CampaignProgress::load(folder / "missing"), CampaignProgress{});
    EXPECT_EQ(CampaignProgress::load(folder.path()), CampaignProgress{});
    EXPECT_EQ(CampaignProgress::load(""), CampaignProgress{});
    CampaignProgress{}.save(folder.path());
    CampaignProgress{}.save("");
    EXPECT_EQ(readText(file), R"({"stars":{"1":3}})");

    CampaignProgress progress;
    progress.record(1, 2, 100);
    progress.save(file);
    EXPECT_EQ(CampaignProgress::load(file), progress);
    EXPECT_EQ(readText(folder / "progress.json.damaged"), R"({"stars":{"1":3}})") << "for who can mend it";
    writeText(folder / "progress.json.damaged", "");
    progress.save(file);
    EXPECT_EQ(readText(folder / "progress.json.damaged"), "") << "a sound file is not set aside";
}

}  // namespace
}  // namespace gull
