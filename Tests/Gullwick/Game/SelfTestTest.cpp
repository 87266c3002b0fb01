#include "Gullwick/Game/SelfTest.h"

#include "Gullwick/Game/GameHarness.h"

#include <chrono>

namespace gull {
namespace {

struct SelfTestTest : GameHarness {
    std::vector<std::string> lines;
    std::optional<int> status;

    SelfTest::Output output() {
        return [this](const std::string& line) { lines.push_back(line); };
    }
    void finish(Task<int> task) {
        task.start([this](int result) { status = result; });
        for (int second = 0; !status && second < 1800; ++second) turn(1);
        ASSERT_TRUE(status) << "the run never ended; last line: " << (lines.empty() ? "" : lines.back());
    }
    std::ptrdiff_t failed() const {
        return std::ranges::count_if(lines,
                                     [](const std::string& line) { return line.starts_with("  FAIL  "); });
    }
    std::ptrdiff_t at(const std::string& line) const { return std::ranges::count(lines, line); }
};

TEST(SelfTest, theLastArgumentMayNameTheBeaches) {
    using Numbers = std::vector<int>;
    const Numbers all{1, 2, 3, 4, 5, 6, 7, 8};
    const auto beaches = [](std::vector<std::string> arguments) { return SelfTest::beaches(arguments); };
    EXPECT_EQ(beaches({"gullwick", "--selftest"}), all);
    EXPECT_EQ(beaches({}), all);
    EXPECT_EQ(beaches({"--selftest", "3"}), Numbers{3});
    EXPECT_EQ(beaches({"3", "--selftest"}), all);
    EXPECT_EQ(beaches({"2,5"}), (Numbers{2, 5}));
    EXPECT_EQ(beaches({"2,x,4"}), (Numbers{2, 4}));
    EXPECT_EQ(beaches({",,7,,"}), Numbers{7});
    EXPECT_EQ(beaches({","}), Numbers{});
    EXPECT_EQ(beaches({"+3"}), Numbers{3});
    EXPECT_EQ(beaches({"3a"}), all);
    EXPECT_EQ(beaches({" 3"}), all);
    EXPECT_EQ(beaches({"99999999999999999999"}), all);
    EXPECT_EQ(beaches({"4, 5"}), Numbers{4});
}

TEST_F(SelfTestTest, theWholeCampaignPassesQuickly) {
    const auto start = std::chrono::steady_clock::now();
    finish(SelfTest::run(loop, settings, feedback, {"gullwick", "--selftest"}, output()));
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(status, 0);
    EXPECT_EQ(failed(), 0);
    EXPECT_EQ(lines.back(), "ALL GOOD");
    EXPECT_EQ(lines.front(), "beach 1: Calm Cove");
    EXPECT_EQ(at("  ok    enters play"), 8);
    EXPECT_EQ(at("  ok    beach ends when everything is found"), 8);
    EXPECT_EQ(at("  ok    stars: 3 (expected 3)"), 7);
    EXPECT_EQ(at("  ok    stars: 2 (expected 2)"), 1);
    EXPECT_EQ(at("  ok    coil reaches treasure 1 (chest)"), 1);
    EXPECT_EQ(at("  ok    Treasure chest goes in the tray"), 1);
    EXPECT_TRUE(feedback.muted);
    EXPECT_LT(took.count(), 5.0);
}

TEST_F(SelfTestTest, oneBeachPrintsItsScriptLineByLine) {
    finish(SelfTest::run(loop, settings, feedback, {"--selftest", "2"}, output()));
    EXPECT_EQ(status, 0);
    ASSERT_GT(lines.size(), 5u);
    EXPECT_TRUE(lines[4].starts_with("  ok    signal builds on approach (0."));
    lines[4] = "approach";
    std::string report;
    for (const std::string& line : lines) report += line + '\n';
    EXPECT_EQ(report, R"(beach 2: Shell Bay
  ok    enters play
  ok    tray starts empty (4 slots)
  ok    tide clock starts full
approach
  ok    locks on right over it
  ok    junk reads as junk
  ok    digging junk counts it
  ok    an empty dig finds nothing
  ok    coil reaches treasure 1 (coin)
  ok    Gold doubloon goes in the tray
  ok    coil reaches treasure 2 (key)
  ok    Iron key goes in the tray
  ok    coil reaches treasure 3 (ring)
  ok    Signet ring goes in the tray
  ok    coil reaches treasure 4 (coin)
  ok    Gold doubloon goes in the tray
  ok    beach ends when everything is found
  ok    stars: 2 (expected 2)
  ok    stars recorded
  ok    next beach unlocked
high tide
  ok    the tide comes in
  ok    result card after the flood
  ok    nothing found = lost
  ok    click tries again
beach select
  ok    opens
  ok    finger picks a tile (2)
  ok    arrows move the cursor (7)
  ok    closes
ALL GOOD
)");
}

TEST_F(SelfTestTest, aControllerThatIgnoresTheFingerFails) {
    const auto sabotage = loop.every(0.001, [this] { game.setTarget({0.5, 0.28}); });
    finish(SelfTest::play(loop, game, {1}, output()));
    EXPECT_EQ(status, 1);
    EXPECT_GE(failed(), 8);
    EXPECT_EQ(lines.back(), std::to_string(failed()) + " FAILURES");
    EXPECT_EQ(at("  FAIL  coil reaches treasure 1 (coin)"), 1);
    EXPECT_EQ(at("  FAIL  locks on right over it"), 1);
    EXPECT_EQ(at("  FAIL  beach ends when everything is found"), 1);
    EXPECT_EQ(at("  FAIL  next beach unlocked"), 1);
    EXPECT_EQ(at("  ok    enters play"), 1);
}

TEST_F(SelfTestTest, aSingleFaultIsCountedInThePlural) {
    const auto sabotage = loop.every(0.001, [this] {
        if (game.phase == Phase::finished) game.earnedStars = 1;  // a star that nobody earned
    });
    finish(SelfTest::play(loop, game, {}, output()));
    EXPECT_EQ(status, 1);
    EXPECT_EQ(failed(), 1);
    EXPECT_EQ(at("  FAIL  nothing found = lost"), 1);
    EXPECT_EQ(lines.front(), "high tide");
    EXPECT_EQ(lines.back(), "1 FAILURES");
}

}  // namespace
}  // namespace gull
