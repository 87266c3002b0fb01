#include "Gullwick/Game/GameHarness.h"

#include <fstream>
#include <tuple>

namespace gull {
namespace {

using BeachLife = GameHarness;
using Phase = GameController::Phase;

/// The state of a game after each of many clumsy steps, all from fixed seeds.
std::vector<double> historyOfAGame() {
    ManualClock clock;
    MainLoop loop(clock);
    AppSettings settings(std::filesystem::temp_directory_path() / "gullwick-no-such-folder" / "none.json");
    Feedback feedback(settings, loop, nullptr, nullptr);
    GameController game(loop, settings, feedback, "", false, 42);
    SplitMix64 hand(9);
    std::vector<double> state;
    for (int step = 0; step < 400; ++step) {
        game.fingerMoved(uniform(hand, 0, 1), uniform(hand, 0, 1));
        loop.turn(clock, uniform(hand, 0.001, 0.4));
        if (step % 3 == 0) game.click();
        if (step % 20 == 0) game.ping();
        for (const double value : {game.coil().x, game.coil().y, game.meter.get(), game.timeLeft.get(),
                                   game.hunt().elapsed(), static_cast<double>(game.phase.get()),
                                   static_cast<double>(game.tickStamp), static_cast<double>(game.haul)})
            state.push_back(value);
    }
    return state;
}

TEST_F(BeachLife, startsOnTheHighestUnlockedBeachAndPlaysAtOnce) {
    CampaignProgress progress;
    progress.record(1, 2, 100);
    progress.record(2, 1, 50);
    progress.save(progressFile);

    senses.surf = 0;
    GameController returning(loop, settings, feedback, progressFile, true, 3);
    EXPECT_EQ(returning.spec->number, 3);
    EXPECT_EQ(returning.selection, 3);
    EXPECT_EQ(returning.phase, Phase::intro);
    EXPECT_EQ(returning.progress.get(), progress);
    EXPECT_EQ(returning.world().beachNumber(), 3);
    EXPECT_GT(senses.surf, 0) << "every beach has its surf";
    turn(0.005);
    EXPECT_EQ(returning.phase, Phase::intro);
    turn(0.01);
    EXPECT_EQ(returning.phase, Phase::playing);
    EXPECT_EQ(Language().tr(returning.toast->value()), "Beach 3 · find 3 of 4 before high tide");
}

TEST_F(BeachLife, theFirstBeachIsTheGeneratorsSecondUseAndLaterOnesGoOn) {
    SplitMix64 generator(1);
    Burial::bury(Campaign::beach(1), generator);
    const auto second = Burial::bury(Campaign::beach(1), generator);
    const auto third = Burial::bury(Campaign::beach(1), generator);
    EXPECT_EQ(game.hunt().items(), second);
    game.restart();
    EXPECT_EQ(game.hunt().items(), third);

    game.beginBeach(4, true, 99);
    const auto seeded = game.hunt().items();
    game.restart();
    EXPECT_NE(game.hunt().items(), seeded);
    game.beginBeach(4, false, 99);
    EXPECT_EQ(game.hunt().items(), seeded);
}

TEST_F(BeachLife, equalSeedsAndEqualHandsGiveEqualGames) {
    EXPECT_EQ(historyOfAGame(), historyOfAGame());
}

TEST_F(BeachLife, unseededControllersDiffer) {
    GameController other(loop, settings, feedback, progressFile, false);
    GameController another(loop, settings, feedback, progressFile, false);
    EXPECT_NE(other.hunt().items(), another.hunt().items());
}

TEST_F(BeachLife, theFlyInTakesItsTimeAndOnlySteeringWorksMeanwhile) {
    turn(0.5);
    game.beginBeach(2, true);
    EXPECT_EQ(game.world().introStart, game.world().time);
    game.click();
    game.ping();
    game.fingerMoved(0.95, 0.95);
    turn(1.28);
    EXPECT_EQ(game.phase, Phase::intro);
    EXPECT_EQ(game.hunt().elapsed(), 0);
    EXPECT_TRUE(game.hunt().holes().empty());
    EXPECT_EQ(game.pings, 0);
    EXPECT_NEAR(game.coil().x, 1, 1e-6);
    turn(0.03);
    EXPECT_EQ(game.phase, Phase::playing);
}

TEST_F(BeachLife, onlyTheLastOfTwoOpeningsGoesOn) {
    game.beginBeach(2, true);
    turn(0.7);
    game.beginBeach(3, true);
    turn(0.7);  // the first one's intro would be over
    EXPECT_EQ(game.phase, Phase::intro);
    EXPECT_FALSE(game.toast->has_value());
    turn(0.7);
    EXPECT_EQ(game.phase, Phase::playing);
    EXPECT_EQ(toast(), "Beach 3 · find 3 of 4 before high tide");
}

TEST_F(BeachLife, anOpeningThatTheSelectInterruptsEndsInPlayWithoutItsToast) {
    game.beginBeach(2, true);
    game.openSelect();
    turn(2);
    EXPECT_EQ(game.phase, Phase::selecting);
    game.closeSelect();
    EXPECT_EQ(game.phase, Phase::playing);
    EXPECT_FALSE(game.toast->has_value());
}

TEST_F(BeachLife, theSelectPausesTheTideAndReturnsWhereItWasOpened) {
    play(1);
    turn(1);
    const double elapsed = game.hunt().elapsed();
    game.key(KeyAction::Levels{});
    EXPECT_EQ(game.phase, Phase::selecting);
    EXPECT_EQ(game.returnPhase(), Phase::playing);
    game.openSelect();
    EXPECT_EQ(game.returnPhase(), Phase::playing);
    game.finish();
    game.key(KeyAction::Restart{});
    turn(5);
    EXPECT_EQ(game.phase, Phase::selecting);
    EXPECT_EQ(game.hunt().elapsed(), elapsed);
    game.key(KeyAction::Levels{});
    EXPECT_EQ(game.phase, Phase::playing);
    game.closeSelect();
    EXPECT_EQ(game.phase, Phase::playing);

    lose();
    game.openSelect();
    game.key(KeyAction::Back{});
    EXPECT_EQ(game.phase, Phase::finished);
}

TEST_F(BeachLife, theSelectOpensWhatIsUnlockedAndRefusesTheRest) {
    play(1);
    game.openSelect();
    game.key(KeyAction::Move{1, 0});
    EXPECT_EQ(game.selection, 2);
    turn(0.1);
    senses.all.clear();
    game.key(KeyAction::Confirm{});
    EXPECT_EQ(game.phase, Phase::selecting);
    EXPECT_EQ(senses.story(), "generic, miss");

    game.key(KeyAction::Move{-1, 0});
    game.click();
    EXPECT_EQ(game.phase, Phase::intro);
    EXPECT_EQ(game.spec->number, 1);
    EXPECT_EQ(game.world().introStart, game.world().time);
}

TEST_F(BeachLife, whenTheTideIsInTheSeaComesAndThenTheResult) {
    play(1);
    game.debugAdvance(99.9);
    wait(Phase::flooding);
    const double start = clock.now();
    EXPECT_TRUE(game.world().floodStart.has_value());
    EXPECT_EQ(senses.count("wave"), 1u);
    game.click();
    EXPECT_TRUE(game.hunt().holes().empty());
    turn(1.9);
    EXPECT_EQ(game.phase, Phase::flooding);
    const auto pulses = senses.times("levelChange");
    ASSERT_EQ(pulses.size(), 3u);
    EXPECT_NEAR(pulses[1] - pulses[0], 0.12, 1e-9);
    EXPECT_NEAR(pulses[2] - pulses[0], 0.24, 1e-9);
    wait(Phase::finished);
    EXPECT_NEAR(clock.now() - start, GameController::floodSeconds, 0.03);
    EXPECT_EQ(game.earnedStars, 0);
    EXPECT_EQ(senses.all.back().what, "lose");
    EXPECT_FALSE(game.progress->isUnlocked(2));
}

TEST_F(BeachLife, aFloodThatEndsInsideTheSelectLeavesTheBeachFlooded) {
    play(1);
    game.debugAdvance(100);
    wait(Phase::flooding);
    turn(1);
    game.openSelect();
    turn(1.5);
    game.closeSelect();
    turn(10);
    EXPECT_EQ(game.phase, Phase::flooding);
    game.restart();
    turn(1.4);
    EXPECT_EQ(game.phase, Phase::playing);

    // Closed before the flood ends, the result comes as usual.
    game.debugAdvance(100);
    wait(Phase::flooding);
    game.openSelect();
    turn(1);
    game.closeSelect();
    turn(1.1);
    EXPECT_EQ(game.phase, Phase::finished);
}

TEST_F(BeachLife, aBeachWithEverythingFoundEndsWhenTheLastFindHasBeenShown) {
    play(1);
    const auto treasures = buried(true);
    digUp(treasures[0]);
    digUp(treasures[1]);
    game.setCoil(treasures[2].at);
    game.dig();
    const double dug = clock.now();
    const double elapsed = game.hunt().elapsed();
    senses.all.clear();
    turn(1.9);
    EXPECT_EQ(game.phase, Phase::playing);
    wait(Phase::finished);
    EXPECT_NEAR(clock.now() - dug, 1.95, 0.04);
    EXPECT_EQ(game.hunt().elapsed(), elapsed);
    EXPECT_EQ(game.earnedStars, 3);
    EXPECT_EQ(game.haul, 220);
    EXPECT_TRUE(game.isNewBest);
    EXPECT_EQ(game.progress->stars.at(1), 3);
    turn(0.2);
    EXPECT_EQ(senses.count("win"), 1u);
    const auto pulses = senses.times("levelChange");
    EXPECT_NEAR(pulses.back() - pulses[pulses.size() - 2], 0.1, 1e-9);
}

TEST_F(BeachLife, aPassedBeachLeadsOnAndALostOneBack) {
    play(1);
    game.nextBeach();
    EXPECT_EQ(game.phase, Phase::playing);  // not from play
    lose();
    game.nextBeach();
    EXPECT_EQ(game.phase, Phase::finished);  // not without a star
    game.click();
    EXPECT_EQ(game.phase, Phase::intro);
    EXPECT_EQ(game.spec->number, 1);
    turn(1.4);
    win();
    EXPECT_TRUE(game.isNewBest);
    game.click();
    EXPECT_EQ(game.phase, Phase::intro);
    EXPECT_EQ(game.spec->number, 2);
    EXPECT_EQ(game.earnedStars, 0) << "those of the last beach";
    EXPECT_FALSE(game.isNewBest);
    turn(1.4);
    lose();
    game.key(KeyAction::Confirm{});
    EXPECT_EQ(game.spec->number, 2);

    play(8);
    win();
    game.key(KeyAction::Next{});
    EXPECT_EQ(game.phase, Phase::selecting);
    EXPECT_EQ(game.returnPhase(), Phase::finished);
    EXPECT_EQ(game.selection, 8);
}

TEST_F(BeachLife, nothingOfADigIsFeltOnTheNextBeach) {
    play(1);
    game.setCoil(buried(true)[0].at);
    game.dig();
    game.restart();
    turn(1);
    EXPECT_EQ(senses.story(), "shovel, levelChange");
}

TEST_F(BeachLife, aNewBeachStartsClean) {
    play(2);
    digUp(buried(true)[0]);
    digUp(buried(false)[0]);
    game.ping();
    EXPECT_EQ(game.world().reveals().size(), 2u);
    const int finds = game.findStamp;
    game.setCoil({0.9, 0.9});
    game.beginBeach(3, true);
    EXPECT_EQ(game.tray.get(), std::vector<bool>(4, false));
    EXPECT_EQ(game.timeLeft, 95);
    EXPECT_EQ(game.junkCount, 0);
    EXPECT_EQ(game.pings, 0);
    EXPECT_EQ(game.haul, 0);
    EXPECT_EQ(game.lastFind.get(), std::nullopt);
    EXPECT_EQ(game.busyUntil(), 0);
    EXPECT_EQ(game.coil(), (PlotPoint{0.5, 0.28}));
    EXPECT_EQ(game.target(), game.coil());
    EXPECT_TRUE(game.world().reveals().empty());
    // What belongs to the player stays.
    EXPECT_EQ(game.findStamp, finds);
    EXPECT_NE(toast(), "");
}

TEST_F(BeachLife, progressIsSavedOnlyWhereItPersists) {
    play(1);
    win();
    EXPECT_FALSE(std::filesystem::exists(progressFile));
    game.resetProgress();
    EXPECT_FALSE(std::filesystem::exists(progressFile));
    EXPECT_TRUE(game.progress->stars.empty());

    owned = std::make_unique<GameController>(loop, settings, feedback, progressFile, true, 5);
    GameController& kept = *owned;
    turn(0.1);
    kept.finish();
    EXPECT_EQ(CampaignProgress::load(progressFile), CampaignProgress{});
    EXPECT_TRUE(std::filesystem::exists(progressFile));  // a lost beach is saved too
    kept.beginBeach(1, false);
    turn(0.1);
    for (const BuriedItem& item : std::vector(kept.hunt().items())) {
        kept.setCoil(item.at);
        kept.dig();
        turn(0.7);
    }
    turn(3);
    EXPECT_EQ(kept.phase, Phase::finished);
    EXPECT_EQ(CampaignProgress::load(progressFile).stars.at(1), 3);
    EXPECT_EQ(CampaignProgress::load(progressFile), kept.progress.get());

    kept.beginBeach(2, false);
    kept.resetProgress();
    EXPECT_EQ(kept.phase, Phase::intro);
    EXPECT_EQ(kept.spec->number, 1);
    EXPECT_EQ(CampaignProgress::load(progressFile), CampaignProgress{});
}

TEST_F(BeachLife, aResultThatCannotBeSavedIsSavedHalfAMinuteLater) {
    const auto inTheWay = folder / ".progress.json.new";
    std::filesystem::create_directories(inTheWay / "x");
    owned = std::make_unique<GameController>(loop, settings, feedback, progressFile, true, 5);
    GameController& kept = *owned;
    turn(0.1);
    testing::internal::CaptureStderr();
    for (const BuriedItem& item : std::vector(kept.hunt().items())) {
        kept.setCoil(item.at);
        kept.dig();
        turn(0.7);
    }
    turn(3);
    ASSERT_EQ(kept.phase, Phase::finished);
    EXPECT_FALSE(std::filesystem::exists(progressFile));
    std::filesystem::remove_all(inTheWay);
    // Another running game has made progress meanwhile.
    CampaignProgress{{{4, 2}}, {}}.save(progressFile);
    turn(GameController::saveAgainInterval);
    EXPECT_EQ(kept.progress->stars, (CampaignProgress::ByBeach{{1, 3}, {4, 2}}));
    EXPECT_EQ(CampaignProgress::load(progressFile), kept.progress.get());
    testing::internal::GetCapturedStderr();
}

TEST_F(BeachLife, aWorseResultIsNoNewBest) {
    play(1);
    win();
    game.beginBeach(1, false);
    turn(0.1);
    for (const BuriedItem& item : std::vector(game.hunt().items())) {
        if (item.kind == ItemKind::coin) digUp(item);
    }
    game.debugAdvance(100);
    wait(Phase::finished);
    EXPECT_EQ(game.earnedStars, 1);
    EXPECT_EQ(senses.count("lose"), 0u) << "one star passes";
    EXPECT_EQ(game.haul, 100);
    EXPECT_FALSE(game.isNewBest);
    EXPECT_EQ(game.progress->stars.at(1), 3);
}

TEST_F(BeachLife, finishMeansNothingOutsideThePlay) {
    game.beginBeach(1, true);
    game.finish();
    EXPECT_EQ(game.phase, Phase::intro);
    play(1);
    win();
    const auto progress = game.progress.get();
    senses.all.clear();
    game.finish();
    EXPECT_EQ(senses.story(), "");
    EXPECT_EQ(game.progress.get(), progress);
}

TEST_F(BeachLife, nothingActsForAControllerThatIsGone) {
    play(2);
    game.setCoil(buried(true)[0].at);
    game.dig();
    game.showToast(message("gone soon"), 1);
    senses.all.clear();
    owned.reset();
    turn(5);
    EXPECT_EQ(senses.count("found"), 0u);
}

TEST_F(BeachLife, aStillPictureIsComposedWithoutAFrame) {
    game.beginBeach(2, false, 4);
    game.debugForcePlaying();
    EXPECT_EQ(game.phase, Phase::playing);
    game.debugAdvance(50);
    EXPECT_EQ(game.timeLeft, 50);
    const BuriedItem treasure = buried(true)[1];
    game.setCoil(treasure.at);
    game.debugSettle(100);
    EXPECT_EQ(game.world().time, 100);
    EXPECT_EQ(game.world().tide, 0.5);
    EXPECT_NEAR(game.meter, 1 - 0.3 * treasure.depth, 1e-12);
    EXPECT_TRUE(game.meterIsTreasure);
    game.dig();
    game.dig();  // still busy
    EXPECT_EQ(game.hunt().holes().size(), 1u);
    game.clearBusy();
    game.dig();
    EXPECT_EQ(game.hunt().holes().size(), 2u);
    game.debugAdvance(1000);
    EXPECT_EQ(game.world().tide, 1);
}

TEST_F(BeachLife, aPauseStopsEverythingAndLosesNothing) {
    // The same beach twice, once with a pause in the middle of a dig: not a step may differ.
    const auto playThrough = [&](bool pauses) {
        play(2);
        const BuriedItem treasure = buried(true)[0];
        game.setCoil(treasure.at);
        turn(0.5);
        game.dig();
        turn(0.2);
        if (pauses) {
            game.key(KeyAction::Pause{});
            EXPECT_TRUE(game.isPaused);
            const double tide = game.hunt().elapsed();
            const double seconds = game.world().time;
            senses.all.clear();
            EXPECT_EQ(senses.surf, 0) << "no surf";
            turn(100);
            game.dig();
            game.ping();
            game.key(KeyAction::Move{1, 0});
            EXPECT_EQ(senses.story(), "");
            EXPECT_EQ(game.hunt().elapsed(), tide);
            EXPECT_EQ(game.world().time, seconds);
            EXPECT_EQ(game.target(), treasure.at);
            game.click();
            EXPECT_FALSE(game.isPaused) << "a click goes on, and digs nothing";
            EXPECT_GT(senses.surf, 0);
        }
        turn(2);
        return std::tuple(game.hunt().elapsed(), game.haul.get(), game.pings.get(),
                          game.hunt().found().size(), senses.count("found"),
                          senses.count("shovel") + (pauses ? 1 : 0));
    };
    const auto [elapsed, haul, pings, found, chimes, digs] = playThrough(false);
    const auto paused = playThrough(true);
    EXPECT_NEAR(std::get<0>(paused), elapsed, 0.02);
    EXPECT_EQ(std::tie(haul, pings, found, chimes, digs),
              std::tie(std::get<1>(paused), std::get<2>(paused), std::get<3>(paused), std::get<4>(paused),
                       std::get<5>(paused)));
}

TEST_F(BeachLife, onlyABeachInPlayIsPausedAndWhatOpensGoesOn) {
    game.beginBeach(1, true);
    game.pause();
    EXPECT_FALSE(game.isPaused) << "intro";
    for (const int way : {0, 1, 2}) {
        play(1);
        game.pause();
        ASSERT_TRUE(game.isPaused);
        if (way == 0) game.key(KeyAction::Restart{});
        if (way == 1) game.key(KeyAction::Levels{});
        if (way == 2) game.key(KeyAction::Pause{});
        EXPECT_FALSE(game.isPaused) << way;
        const double before = game.world().time;
        turn(0.1);
        EXPECT_GT(game.world().time, before) << way;
    }
    game.closeSelect();
    play(1);
    game.allowPausing(false);
    game.pause();
    EXPECT_FALSE(game.isPaused) << "a measurement";
}

}  // namespace
}  // namespace gull
