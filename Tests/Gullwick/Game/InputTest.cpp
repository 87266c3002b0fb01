#include "Gullwick/Game/GameHarness.h"

#include <limits>

namespace gull {
namespace {

using Input = GameHarness;
using Phase = GameController::Phase;

TEST_F(Input, aFingerMapsThePadOntoThePlot) {
    play(1);
    game.fingerMoved(0.02, 0.98);
    EXPECT_EQ(game.target(), (PlotPoint{0, 1}));
    game.fingerMoved(0.5, 0.275);
    EXPECT_NEAR(game.target().x, 0.5, 1e-12);
    EXPECT_NEAR(game.target().y, 0.25, 1e-12);
    lose();
    game.fingerMoved(0.95, 0.05);  // on the result card too
    EXPECT_NEAR(game.target().x, 1, 1e-12);
}

TEST_F(Input, arrowsNudgeTheTargetWithinThePlot) {
    play(1);
    game.setTarget({0.5, 0.5});
    game.key(KeyAction::Move{1, 0});
    EXPECT_NEAR(game.target().x, 0.535, 1e-12);
    game.key(KeyAction::Move{0, 1});
    EXPECT_NEAR(game.target().y, 0.55, 1e-12);
    game.setTarget({0.99, 0.5});
    game.key(KeyAction::Move{1, 0});
    EXPECT_EQ(game.target(), (PlotPoint{1, 0.5}));
    game.setTarget({0.5, 0.02});
    game.key(KeyAction::Move{0, -1});
    EXPECT_EQ(game.target(), (PlotPoint{0.5, 0}));
}

TEST_F(Input, fingerAndArrowsMoveTheCursorOfTheSelect) {
    play(1);
    game.openSelect();
    senses.all.clear();
    const auto finger = [&](double x, double y) {
        game.fingerMoved(x * 0.9 + 0.05, y * 0.9 + 0.05);
        return game.selection.get();
    };
    EXPECT_EQ(finger(0.32, 0.77), 2);
    EXPECT_EQ(finger(0.34, 0.6), 2);
    EXPECT_EQ(senses.story(), "alignment, tap");  // within a tile it is silent
    EXPECT_EQ(finger(0.9, 0.2), 8);
    EXPECT_EQ(finger(1.1, 1), 4);
    EXPECT_EQ(finger(1.1, 0.4), 8);
    game.fingerMoved(0.5, 0.5);
    EXPECT_EQ(game.selection, 7);  // the middle belongs to the lower row
    EXPECT_EQ(game.target(), (PlotPoint{0.5, 0.28}));

    const auto arrow = [&](int from, int dx, int dy) {
        game.selection = from;
        game.key(KeyAction::Move{dx, dy});
        return game.selection.get();
    };
    EXPECT_EQ(arrow(4, 1, 0), 4);
    EXPECT_EQ(arrow(2, 0, 1), 6);
    EXPECT_EQ(arrow(7, 0, -1), 3);
    EXPECT_EQ(arrow(6, 0, 1), 6);
    EXPECT_EQ(arrow(1, -1, -1), 1);
    EXPECT_EQ(arrow(5, -1, 0), 5);
    EXPECT_EQ(arrow(2, 1, 1), 7);
}

TEST_F(Input, treasureFillsItsSlotFromTheLeft) {
    play(1);  // coin, ring, coin
    const auto treasures = buried(true);
    digUp(treasures[2]);
    EXPECT_EQ(game.tray.get(), (std::vector<bool>{true, false, false}));
    EXPECT_EQ(game.lastFind.get(), ItemKind::coin);
    EXPECT_EQ(game.findStamp, 1);
    EXPECT_EQ(game.haul, 50);
    digUp(treasures[0]);
    EXPECT_EQ(game.tray.get(), (std::vector<bool>{true, false, true}));
    EXPECT_EQ(game.findStamp, 2);
    digUp(treasures[1]);
    EXPECT_EQ(game.tray.get(), (std::vector<bool>{true, true, true}));
    EXPECT_EQ(game.haul, 220);
}

TEST_F(Input, aFindIsHeardAndFeltAndTellsWhenTheBeachIsPassed) {
    play(1);
    game.setCoil(buried(true)[0].at);
    turn(0.1);
    senses.all.clear();
    game.dig();
    const double dug = clock.now();
    EXPECT_NEAR(game.busyUntil(), dug + 0.65, 1e-12);
    game.dig();
    turn(0.6);
    EXPECT_EQ(senses.story(), "shovel, levelChange, levelChange, levelChange, found");
    EXPECT_NEAR(senses.times("found")[0], dug + 0.3, 1e-9);
    EXPECT_NEAR(senses.times("levelChange")[2], dug + 0.12, 1e-9);
    EXPECT_EQ(game.hunt().holes().size(), 1u);
    turn(0.1);
    digUp(buried(true)[1]);
    EXPECT_EQ(toast(), "Beach cleared! Keep going for the rest, or wait out the tide");
    turn(3);
    EXPECT_EQ(toast(), "");
    digUp(buried(true)[2]);
    EXPECT_EQ(toast(), "");  // the result card says the rest
}

TEST_F(Input, theChestHasASoundOfItsOwn) {
    play(8);
    game.setCoil(buried(true)[0].at);
    game.dig();
    turn(0.6);
    EXPECT_EQ(game.lastFind.get(), ItemKind::chest);
    EXPECT_EQ(senses.story(), "shovel, levelChange, levelChange, levelChange, levelChange, chest");
}

TEST_F(Input, junkCountsAndIsExplainedOnceARun) {
    play(2);
    game.setCoil(buried(false)[0].at);
    turn(0.1);
    senses.all.clear();
    game.dig();
    const double dug = clock.now();
    EXPECT_NEAR(game.busyUntil(), dug + 0.6, 1e-12);
    EXPECT_EQ(toast(), "Bottle cap. Junk ticks in pairs — tick-tick … tick-tick");
    turn(0.5);
    ASSERT_EQ(senses.story(), "shovel, generic, generic, junk");
    EXPECT_NEAR(senses.times("generic")[1], dug + 0.08, 1e-9);
    EXPECT_NEAR(senses.times("junk")[0], dug + 0.22, 1e-9);
    EXPECT_EQ(game.junkCount, 1);
    turn(0.2);
    digUp(buried(false)[1]);
    EXPECT_EQ(toast(), "Soda can");
    EXPECT_EQ(game.junkCount, 2);
    turn(1);
    EXPECT_EQ(toast(), "");
    play(3);
    digUp(buried(false)[3]);
    EXPECT_EQ(toast(), "Foil wrapper");
}

TEST_F(Input, theFirstAndTheFourthMissOfABeachBringAdvice) {
    for (const int beach : {2, 3}) {
        play(beach);
        game.setCoil(nowhere());
        turn(4);
        std::string advised;
        for (int miss = 1; miss <= 6; ++miss) {
            senses.all.clear();
            game.dig();
            EXPECT_EQ(senses.story(), "shovel, generic, miss");
            advised += toast() == "Nothing here — dig where the ticks are fastest" ? '!' : '.';
            turn(4);
        }
        EXPECT_EQ(advised, "!..!..");
        EXPECT_EQ(game.hunt().holes().size(), 6u);
    }
}

TEST_F(Input, aPingCostsTideAndWorksDuringADig) {
    play(2);
    game.setCoil(nowhere());
    game.dig();
    senses.all.clear();
    const double elapsed = game.hunt().elapsed();
    game.key(KeyAction::Ping{});
    EXPECT_EQ(game.pings, 1);
    EXPECT_EQ(game.hunt().elapsed(), elapsed + 5);
    EXPECT_EQ(senses.story(), "ping, levelChange");
    EXPECT_EQ(toast(), "Ping — that way · cost 5 s of tide");
    game.openSelect();
    game.ping();
    EXPECT_EQ(game.pings, 1);

    play(1);
    game.setCoil(buried(true)[0].at);
    for (const BuriedItem& item : buried(true)) digUp(item);
    senses.all.clear();
    game.ping();  // nothing left to point at
    EXPECT_EQ(game.pings, 0);
    EXPECT_EQ(senses.count("ping"), 0u);
}

TEST_F(Input, confirmDoesWhatThePhaseHas) {
    game.beginBeach(1, true);
    game.key(KeyAction::Confirm{});
    EXPECT_EQ(game.phase, Phase::intro);
    play(1);
    game.setCoil(nowhere());
    game.key(KeyAction::Confirm{});
    EXPECT_EQ(game.hunt().holes().size(), 1u);
    game.debugAdvance(100);
    wait(Phase::flooding);
    game.key(KeyAction::Confirm{});
    game.click();
    EXPECT_EQ(game.phase, Phase::flooding);
    wait(Phase::finished);
    game.key(KeyAction::Confirm{});
    EXPECT_EQ(game.phase, Phase::intro);
    game.key(KeyAction::Restart{});
    EXPECT_EQ(game.phase, Phase::intro);
}

TEST_F(Input, aLockedBeachIsRefusedUntilTheCursorMoves) {
    play(1);
    game.openTile(4);
    EXPECT_EQ(game.phase, Phase::playing) << "there are no tiles";
    game.openSelect();
    game.openTile(4);
    EXPECT_EQ(game.phase, Phase::selecting);
    EXPECT_EQ(game.selection, 4);
    EXPECT_EQ(game.refusedBeach, 4);
    game.key(KeyAction::Move{-1, 0});
    EXPECT_EQ(game.refusedBeach, 0);
    game.openTile(1);
    EXPECT_EQ(game.phase, Phase::intro);
}

TEST_F(Input, onlyTheFirstLossOfARunTeaches) {
    for (const bool first : {true, false}) {
        play(1);
        lose();
        EXPECT_EQ(game.isFirstLoss, first);
    }
    play(1);
    win();
    EXPECT_FALSE(game.isFirstLoss);
}

TEST_F(Input, aPlaceThatIsNotFiniteMovesNothing) {
    play(1);
    game.setTarget({0.3, 0.7});
    const double none = std::numeric_limits<double>::quiet_NaN();
    game.setTarget({none, 0.5});
    game.setTarget({0.5, 1 / 0.0});
    game.fingerMoved(0.5, none);
    EXPECT_EQ(game.target(), (PlotPoint{0.3, 0.7}));
    game.openSelect();
    game.fingerMoved(none, 0.5);
    EXPECT_EQ(game.selection, 1);
}

}  // namespace
}  // namespace gull
