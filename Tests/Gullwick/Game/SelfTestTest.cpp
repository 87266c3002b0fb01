#include "Gullwick/Game/SelfTest.h"

#include "Gullwick/Game/GameHarness.h"

#include <algorithm>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

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
    const auto beaches = [](const std::vector<std::string>& arguments) {
        return SelfTest::beaches(arguments);
    };
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
    const std::clock_t start = std::clock();  // of the processor: other programs must not count
    finish(SelfTest::run(loop, settings, feedback, {"gullwick", "--selftest"}, output()));
    const double took = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
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
    EXPECT_LT(took, 5.0);
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

/// Each check of the script sees the fault that it is for.
TEST_F(SelfTestTest, everyCheckFailsOnItsOwnFault) {
    struct Fault {
        std::vector<int> beaches;
        std::string check;
        std::function<void()> plant;  ///< called all the time
    };
    const auto first = [this](bool treasure) { return buried(treasure).at(0); };
    bool wasFinished = false;
    const std::vector<Fault> faults{
        {{1}, "enters play", [&] { game.phase = Phase::intro; }},
        {{1},
         "tray starts empty (3 slots)",
         [&] {
             game.tray = std::vector<bool>{false, true, false};
         }},
        {{1}, "tray starts empty (3 slots)", [&] { game.tray = std::vector<bool>(2); }},
        {{1}, "tide clock starts full", [&] { game.timeLeft = game.spec->tideSeconds - 0.6; }},
        {{1}, "signal builds on approach", [&] { game.setCoil(first(true).at); }},
        {{1}, "signal builds on approach", [&] { game.setCoil(nowhere()); }},
        {{2}, "junk reads as junk", [&] { game.setCoil(first(true).at); }},
        {{2}, "digging junk counts it", [&] { game.isPaused = true; }},
        {{3}, "ping costs tide", [&] { game.pings = 0; }},
        {{3}, "ping costs tide", [&] { game.timeLeft = game.spec->tideSeconds; }},
        {{1},
         "an empty dig finds nothing",
         [&] {
             if (!game.hunt().holes().empty()) game.tray = std::vector<bool>(3, true);
         }},
        {{1}, "an empty dig finds nothing", [&] { game.isPaused = true; }},
        {{1}, "Gold doubloon goes in the tray", [&] { game.tray = std::vector<bool>(3); }},
        {{1},
         "beach ends when everything is found",
         [&] {
             if (game.spec->number == 1 && game.hunt().isAllFound()) game.phase = Phase::intro;
         }},
        {{1}, "stars: 2 (expected 3)", [&] { game.earnedStars = 2; }},
        {{2}, "stars: 3 (expected 2)", [&] { game.earnedStars = 3; }},
        {{1}, "stars recorded", [&] { game.progress = CampaignProgress{}; }},
        {{1}, "next beach unlocked", [&] { game.progress = CampaignProgress{}; }},
        {{},
         "the tide comes in",
         [&] {
             if (game.hunt().elapsed() > 5) game.beginBeach(1, false, 5);
         }},
        {{},
         "result card after the flood",
         [&] {
             if (game.phase == Phase::finished) game.phase = Phase::flooding;
         }},
        {{},
         "click tries again",
         [&] {
             wasFinished = wasFinished || game.phase == Phase::finished;
             if (wasFinished) game.phase = Phase::finished;
         }},
    };
    for (const Fault& fault : faults) {
        SCOPED_TRACE(fault.check);
        lines.clear();
        status.reset();
        const auto planted = loop.every(0.0005, fault.plant);
        finish(SelfTest::play(loop, game, fault.beaches, output()));
        EXPECT_EQ(status, 1);
        EXPECT_TRUE(std::ranges::any_of(
            lines, [&](const std::string& line) { return line.starts_with("  FAIL  " + fault.check); }));
        game.isPaused = false;
    }
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
