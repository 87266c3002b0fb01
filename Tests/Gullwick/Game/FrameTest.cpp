#include "Gullwick/Game/GameHarness.h"

#include <cmath>

namespace gull {
namespace {

using Frame = GameHarness;
using Phase = GameController::Phase;
constexpr double frameTime = GameController::frameInterval;

TEST_F(Frame, theCoilEasesTowardTheTargetInTheSameTimeAtAnyFrameRate) {
    play(1);
    game.setCoil({0, 0});
    game.setTarget({1, 0.5});
    turn(0.25);
    // 15 steps of 1 - e^(-24 / 60) leave e^-6 of the way.
    EXPECT_NEAR(game.coil().x, 1 - 0.0024787521766663585, 1e-9);
    EXPECT_NEAR(game.coil().y, 0.5 * (1 - 0.0024787521766663585), 1e-9);
}

TEST_F(Frame, aFrameInNoTimeChangesNothing) {
    play(1);
    game.setTarget({0.9, 0.9});
    turn(0.1);
    game.frame();
    const PlotPoint coil = game.coil();
    const double elapsed = game.hunt().elapsed();
    const double meter = game.meter;
    for (int i = 0; i < 100; ++i) game.frame();
    EXPECT_EQ(game.coil(), coil);
    EXPECT_EQ(game.hunt().elapsed(), elapsed);
    EXPECT_EQ(game.meter, meter);
}

TEST_F(Frame, aMachineThatSleptLosesAFrameOfTideAndNoMore) {
    play(1);
    const double elapsed = game.hunt().elapsed();
    clock.moveTo(clock.now() + 10);
    game.frame();
    EXPECT_NEAR(game.hunt().elapsed(), elapsed + 0.05, 1e-12);
    game.setCoil({0, 0});
    game.setTarget({1, 0});
    clock.moveTo(clock.now() + 3600);
    game.frame();
    EXPECT_NEAR(game.coil().x, 1 - std::exp(-1.2), 1e-12);
}

TEST_F(Frame, treasureTicksSinglyAtItsRhythm) {
    play(2);
    const BuriedItem treasure = buried(true)[0];
    game.setCoil(treasure.at);
    turn(frameTime * 1.5);
    const int stamp = game.tickStamp;
    senses.all.clear();
    turn(2);
    const auto ticks = senses.times("beep");
    const double strength = 1 - 0.3 * treasure.depth;
    const double interval = 0.8 * std::pow(0.06875, strength);
    ASSERT_GE(ticks.size(), 20u);
    for (std::size_t i = 1; i < ticks.size(); ++i) {
        EXPECT_GE(ticks[i] - ticks[i - 1], interval - 1e-9);
        EXPECT_LE(ticks[i] - ticks[i - 1], interval + frameTime + 1e-9);
    }
    EXPECT_EQ(senses.count("beep " + std::to_string(static_cast<int>(strength * 10))), ticks.size());
    EXPECT_EQ(senses.times("alignment"), ticks);
    EXPECT_EQ(senses.count("buzz"), 0u);
    EXPECT_EQ(game.tickStamp - stamp, static_cast<int>(ticks.size()));
}

TEST_F(Frame, junkTicksInPairs) {
    play(2);
    game.setCoil(buried(false)[0].at);
    turn(frameTime * 1.5);
    turn(0.06);  // the pair that was in progress
    const int stamp = game.tickStamp;
    senses.all.clear();
    turn(3);
    std::vector<Sensation> ticks;
    for (const Sensation& sensation : senses.all)
        if (sensation.what.starts_with("buzz")) ticks.push_back(sensation);
    ASSERT_GE(ticks.size(), 20u);
    EXPECT_EQ(game.tickStamp - stamp, static_cast<int>(ticks.size()));
    EXPECT_EQ(senses.count("generic"), ticks.size());
    for (std::size_t i = 0; i + 1 < ticks.size(); i += 2) {
        EXPECT_NEAR(ticks[i + 1].time - ticks[i].time, 0.055, 1e-9);
        EXPECT_EQ(ticks[i].gain, 1.0F);
        EXPECT_EQ(ticks[i + 1].gain, 0.85F);
        EXPECT_EQ(ticks[i].what, ticks[i + 1].what);
        if (i) {
            EXPECT_GE(ticks[i].time - ticks[i - 2].time, 0.17 - 1e-9);
        }
    }
}

TEST_F(Frame, theSecondTickOfAPairIsNotHeardOnceThePlayIsLeft) {
    play(2);
    game.setCoil(buried(false)[0].at);
    wait(Phase::playing);
    while (senses.count("buzz") == 0) turn(0.001);
    game.openSelect();
    turn(1);
    EXPECT_EQ(senses.count("buzz"), 1u);
}

TEST_F(Frame, onlyBeachesThatShowKindsTintBySignal) {
    const Reading gold{0.5, BuriedItem{0, ItemKind::ring, {}, 0}, false};
    const Reading junk{0.5, BuriedItem{0, ItemKind::nail, {}, 0}, false};
    const Colour aqua{0.55, 0.98, 0.92};
    play(4);
    EXPECT_EQ(game.tintColour(gold), (Colour{1.0, 0.76, 0.28}));
    EXPECT_EQ(game.tintColour(junk), (Colour{0.55, 0.62, 0.78}));
    EXPECT_EQ(game.tintColour(Reading::silent()), aqua);
    play(5);
    EXPECT_EQ(game.tintColour(gold), aqua);
    EXPECT_EQ(game.tintColour(junk), aqua);
}

TEST_F(Frame, theDetectorLocksOnOncePerVisit) {
    play(2);
    const BuriedItem junk = buried(false)[0];
    game.setCoil(nowhere());
    turn(0.1);
    senses.all.clear();
    game.setCoil(junk.at);
    turn(0.5);
    EXPECT_EQ(senses.count("lockOn"), 1u);
    EXPECT_EQ(senses.count("levelChange"), 1u);
    game.setCoil(nowhere());
    turn(0.5);
    game.setCoil(junk.at);
    turn(0.5);
    EXPECT_EQ(senses.count("lockOn"), 2u);
    game.beginBeach(2, false, 7);  // a new beach is a new visit
    game.setCoil(junk.at);
    turn(0.1);
    EXPECT_EQ(senses.count("lockOn"), 3u);
}

TEST_F(Frame, theFirstSignalAfterADigTicksAtOnce) {
    play(1, 12);
    const BuriedItem ring = buried(true)[1];
    // A signal so weak that ticks are half a second apart.
    PlotPoint faint = ring.at;
    while (game.hunt().reading(faint).strength > 0.25) faint.y += faint.y < 0.5 ? 0.01 : -0.01;
    game.setCoil(faint);
    while (senses.count("beep") == 0) turn(0.001);
    game.dig();
    const double over = game.busyUntil();
    senses.all.clear();
    turn(0.45);
    ASSERT_EQ(senses.count("beep"), 1u);
    EXPECT_LE(senses.times("beep")[0], over + frameTime + 1e-9);
}

TEST_F(Frame, onlyAMovingCoilLeavesATrail) {
    play(1);
    turn(0.2);
    const auto marks = [&] {
        turn(0.2);
        return game.world().trail.texture()->version();
    };
    const auto before = marks();
    EXPECT_EQ(marks(), before);
    game.setCoil({game.coil().x + 0.005, game.coil().y});  // 0.008 on the plot
    EXPECT_EQ(marks(), before);
    game.setCoil({game.coil().x + 0.003, game.coil().y});
    const auto after = marks();
    EXPECT_GT(after, before);
    game.openSelect();
    game.setCoil({0.9, 0.9});
    EXPECT_EQ(marks(), after);
}

TEST_F(Frame, theTutorialLeadsFromTheFirstSignalToTheFirstFind) {
    game.beginBeach(1, false, 12);
    const PlotPoint quiet{0.02, 0.02};
    ASSERT_LT(game.hunt().reading(quiet).strength, 0.05);
    game.setCoil(quiet);
    turn(0.05);
    EXPECT_EQ(toast(), "Rest one finger on the trackpad and slide it — the trackpad is the beach");
    turn(5.9);
    EXPECT_NE(toast(), "");
    turn(0.1);
    EXPECT_EQ(toast(), "");
    const BuriedItem treasure = buried(true)[1];
    game.setCoil({treasure.at.x + (treasure.at.x < 0.5 ? 0.09 : -0.09), treasure.at.y});
    turn(0.05);
    EXPECT_EQ(toast(), "Feel the ticks? They speed up as you get closer");
    game.setCoil(treasure.at);
    turn(0.05);
    EXPECT_EQ(toast(), "Right on top of it — click the trackpad to dig!");
    turn(5.1);
    EXPECT_EQ(toast(), "");
    digUp(treasure);
    game.setCoil(buried(true)[0].at);
    turn(1);
    EXPECT_EQ(toast(), "");  // the hints are over
}

TEST_F(Frame, whoFindsWithoutHintsGetsNone) {
    play(1, 12);
    game.setCoil({0.02, 0.02});
    turn(7);
    game.setCoil(buried(true)[0].at);
    game.dig();  // before the detector could say anything
    turn(2);
    EXPECT_EQ(toast(), "");
}

TEST_F(Frame, theFirstInstructionStandsLongEnoughToBeRead) {
    // The coil opens over a signal and right beside treasure: both hints are due at once.
    game.beginBeach(1, false, 12);
    game.setCoil(buried(true)[1].at);
    turn(0.05);
    const std::string opening = toast();
    EXPECT_EQ(opening, Language().tr(TutorialHints::opening({})));
    turn(2.4);
    EXPECT_EQ(toast(), opening);
    turn(0.15);
    EXPECT_EQ(toast(), "Right on top of it — click the trackpad to dig!") << "the later one";
    turn(5.1);
    EXPECT_EQ(toast(), "");

    // A find, or another beach, while a hint waits: the hint is dropped.
    for (const bool finds : {true, false}) {
        game.beginBeach(1, false, 12);
        game.setCoil(buried(true)[1].at);
        turn(0.1);
        finds ? game.dig() : game.beginBeach(2, false, 12);
        turn(7);
        EXPECT_EQ(toast(), "") << finds;
    }
}

TEST_F(Frame, theTutorialSpeaksOfWhatIsInHand) {
    const auto said = [](const std::optional<Message>& hint) {
        return hint ? Language().tr(*hint) : std::string();
    };
    const auto told = [&](const Controls& controls) {
        game.controls = controls;
        game.beginBeach(1, false, 12);
        turn(0.05);
        std::string all = toast();
        TutorialHints hints;
        hints.start();
        all += " | " + said(hints.advance({0.1, {}, false}, controls));
        all += " | " + said(hints.advance({1, BuriedItem{0, ItemKind::coin, {}, 0}, true}, controls));
        return all;
    };
    EXPECT_EQ(
        told({Controls::Kind::mouse}),
        "Move the mouse and the detector follows — click where the ticks are fastest | Hear the ticks? They "
        "speed up as you get closer | Right on top of it — click to dig!");
    const std::string pad = told({Controls::Kind::controller, {.dig = "Cross"}});
    EXPECT_TRUE(pad.find("left stick") != pad.npos && pad.find("Cross digs!") != pad.npos) << pad;
    EXPECT_EQ(pad.find("click"), pad.npos) << pad;
}

TEST_F(Frame, whoCannotHearOrFeelTicksIsNotAskedWhetherTheyDo) {
    const auto hint = [&](bool comesUpLate) {
        senses.isPluggedIn = true;  // as long as nobody knows
        game.beginBeach(1, false, 12);
        const BuriedItem treasure = buried(true)[1];
        game.setCoil({treasure.at.x + (treasure.at.x < 0.5 ? 0.09 : -0.09), treasure.at.y});
        turn(0.1);
        senses.isPluggedIn = comesUpLate;
        turn(2.6);
        return toast();
    };
    EXPECT_EQ(hint(false), "See the bars? They rise as you get closer");
    settings.showTicks = true;
    EXPECT_EQ(hint(false), "See the ticks? They speed up as you get closer");
    EXPECT_EQ(hint(true), "Feel the ticks? They speed up as you get closer");
}

TEST_F(Frame, theTutorialWaitsForTreasureNotJunk) {
    TutorialHints hints;
    const Reading junk{1, BuriedItem{0, ItemKind::can, {}, 0}, true};
    const Reading gold{1, BuriedItem{0, ItemKind::coin, {}, 0}, true};
    EXPECT_FALSE(hints.advance(gold, Controls{}));  // off
    hints.start();
    EXPECT_FALSE(hints.advance(Reading{0.05, {}, false}, Controls{}));
    EXPECT_TRUE(hints.advance(junk, Controls{}));  // any signal will do
    EXPECT_FALSE(hints.advance(junk, Controls{}));
    EXPECT_EQ(hints.stage(), 2);
    EXPECT_TRUE(hints.advance(gold, Controls{}));
    EXPECT_FALSE(hints.advance(gold, Controls{}));
    EXPECT_EQ(hints.stage(), 3);
}

TEST_F(Frame, theLastTenSecondsAreCountedDownOnceEach) {
    play(1);
    game.setCoil(nowhere());
    game.debugAdvance(88.5);
    wait(Phase::flooding, 15);
    const auto seconds = senses.times("countdown");
    ASSERT_EQ(seconds.size(), 10u);
    for (std::size_t i = 1; i < seconds.size(); ++i) EXPECT_NEAR(seconds[i] - seconds[i - 1], 1, 0.02);
}

TEST_F(Frame, aPingJumpsOverSecondsOfTheCountdown) {
    play(1);
    game.setCoil(nowhere());
    game.debugAdvance(100 - game.hunt().elapsed() - 8.5);
    turn(0.1);
    EXPECT_EQ(senses.count("countdown"), 1u);  // for 9
    game.ping();
    turn(0.1);
    EXPECT_EQ(senses.count("countdown"), 2u);  // for 4; 8 to 5 are silent
    turn(1);
    EXPECT_EQ(senses.count("countdown"), 3u);
}

TEST(Countdown, announcesWholeSecondsAndNeverZero) {
    Countdown countdown;
    EXPECT_FALSE(countdown.advance(10.001));
    EXPECT_TRUE(countdown.advance(10));
    EXPECT_FALSE(countdown.advance(9.001));
    EXPECT_TRUE(countdown.advance(9));
    EXPECT_TRUE(countdown.advance(0.4));
    EXPECT_FALSE(countdown.advance(0));
    EXPECT_FALSE(countdown.advance(-1));
    countdown.reset();
    EXPECT_TRUE(countdown.advance(0.4));
}

TEST_F(Frame, aDigHoldsCoilDetectorAndTutorialButNotTheTide) {
    play(1);
    game.setCoil(nowhere());
    turn(0.05);
    game.dig();
    EXPECT_NEAR(game.busyUntil(), clock.now() + 0.4, 1e-12);
    const PlotPoint coil = game.coil();
    const double elapsed = game.hunt().elapsed();
    game.setTarget(buried(true)[0].at);
    senses.all.clear();
    turn(0.38);
    EXPECT_EQ(game.coil(), coil);
    EXPECT_EQ(senses.count("beep"), 0u);
    EXPECT_NEAR(game.hunt().elapsed(), elapsed + 0.38, 0.02);
    turn(0.5);
    EXPECT_NE(game.coil(), coil);
    EXPECT_GT(senses.count("beep"), 0u);

    game.dig();
    game.debugAdvance(100);
    turn(0.05);
    EXPECT_EQ(game.phase, Phase::flooding);
}

TEST_F(Frame, theMeterFollowsTheSignalAndSinksOutsideThePlay) {
    play(2);
    const BuriedItem junk = buried(false)[0];
    game.setCoil(junk.at);
    turn(1);
    EXPECT_NEAR(game.meter, 1 - 0.3 * junk.depth, 1e-6);
    EXPECT_FALSE(game.meterIsTreasure);
    game.openSelect();
    turn(frameTime);
    EXPECT_NEAR(game.meter, 0.7 * (1 - 0.3 * junk.depth), 1e-6);  // 18 / 60 of the way each frame
    turn(1);
    EXPECT_EQ(game.meter, 0) << "or one bar stays lit";
    EXPECT_FALSE(game.meterIsTreasure);  // without a signal the last colour stays
    EXPECT_EQ(game.reading(), Reading::silent());
    game.closeSelect();
    game.setCoil(buried(true)[0].at);
    turn(0.2);
    EXPECT_TRUE(game.meterIsTreasure);
    game.openSelect();
    turn(0.2);
    EXPECT_TRUE(game.meterIsTreasure);
}

TEST_F(Frame, theShownTideMovesInStepsAndObserversHearOfItInTime) {
    play(1);
    game.setCoil(nowhere());
    std::vector<double> shown;
    double lastHeard = clock.now();
    double longestSilence = 0;
    auto observer = game.changes().observe([&] {
        longestSilence = std::max(longestSilence, clock.now() - lastHeard);
        lastHeard = clock.now();
        if (shown.empty() || shown.back() != game.timeLeft) shown.push_back(game.timeLeft);
    });
    turn(2);
    observer.reset();
    EXPECT_LE(longestSilence, 0.05);
    ASSERT_GE(shown.size(), 25u);
    ASSERT_LE(shown.size(), 41u);  // at most one step for each 0.05 s
    for (std::size_t i = 1; i < shown.size(); ++i) EXPECT_GT(shown[i - 1] - shown[i], 0.04);
    EXPECT_NEAR(game.timeLeft, 100 - game.hunt().elapsed(), 0.1);
}

TEST_F(Frame, theTideEndsAtZeroWhereverItStood) {
    // Every remainder that the last step but one may leave.
    for (double start = 99.0; start < 99.05; start += 0.003) {
        play(1);
        game.debugAdvance(start);
        wait(Phase::flooding);
        wait(Phase::finished);
        ASSERT_EQ(game.timeLeft, 0) << start;
    }
}

TEST_F(Frame, reduceMotionReachesTheScene) {
    play(1);
    EXPECT_FALSE(game.world().reduceMotion);
    settings.reduceMotion = true;
    turn(0.05);
    EXPECT_TRUE(game.world().reduceMotion);
}

TEST_F(Frame, whereToastsWaitForPicturesTheirTimeStartsWithTheNextOne) {
    play(2);
    game.waitForPictures();
    game.showToast(message("seen late"), 1);
    turn(5);
    EXPECT_EQ(toast(), "seen late") << "nobody has seen it yet";
    game.pictureShown();
    turn(0.9);
    game.pictureShown();
    EXPECT_EQ(toast(), "seen late");
    turn(0.2);
    EXPECT_EQ(toast(), "") << "later pictures do not prolong it";
}

TEST_F(Frame, aToastStandsForItsTimeUnlessANewerOneReplacesIt) {
    play(2);
    game.showToast(message("first"), 1);
    turn(0.8);
    game.showToast(message("second"), 1);
    turn(0.8);  // the first one's time is over
    EXPECT_EQ(toast(), "second");
    game.beginBeach(3, true);
    EXPECT_EQ(toast(), "second");  // it outlives a change of beach
    turn(0.3);
    EXPECT_EQ(toast(), "");
}

struct Toasts : testing::Test {
    ManualClock ownClock;
    MainLoop ownLoop{ownClock};
    ChangeNotifier changes;
    Toast::Line line{changes};
    Toast toasts{ownLoop, line};
};

TEST_F(Toasts, whatFollowsTheOpeningLeavesItReadableFromItsFirstPictureOn) {
    toasts.waitForPictures();
    toasts.showOpening(message("opening"), 6);
    toasts.showAfterOpening([] { return message("hint"); }, 5);
    ownLoop.turn(ownClock, 4);
    EXPECT_EQ(line.get(), message("opening")) << "nobody has seen it yet";
    toasts.pictureShown();
    ownLoop.turn(ownClock, Toast::readable - 0.1);
    EXPECT_EQ(line.get(), message("opening"));
    ownLoop.turn(ownClock, 0.2);
    EXPECT_EQ(line.get(), message("hint"));

    // The same if the signal comes after the first picture.
    toasts.showOpening(message("opening"), 6);
    ownLoop.turn(ownClock, 2);
    toasts.pictureShown();
    toasts.showAfterOpening([] { return message("hint"); }, 5);
    ownLoop.turn(ownClock, Toast::readable - 0.1);
    EXPECT_EQ(line.get(), message("opening"));
    toasts.dropWaiting();
    ownLoop.turn(ownClock, 1);
    EXPECT_EQ(line.get(), message("opening")) << "the find needs no hint any more";
}

TEST_F(Toasts, hintsWaitForTheEndOfTheOpeningToast) {
    toasts.queueHint(message("one"), 2);
    toasts.queueHint(message("two"), 2);
    toasts.show(message("not an opening"), 1);
    ownLoop.turn(ownClock, 1.5);
    EXPECT_EQ(line.get(), std::nullopt);
    toasts.showOpening(message("opening"), 3);
    ownLoop.turn(ownClock, 2);
    toasts.show(message("in between"), 2);
    ownLoop.turn(ownClock, 1.9);
    EXPECT_EQ(line.get(), message("in between"));
    ownLoop.turn(ownClock, 0.2);
    EXPECT_EQ(line.get(), message("one"));
    ownLoop.turn(ownClock, 2);
    EXPECT_EQ(line.get(), message("two"));
    ownLoop.turn(ownClock, 2);
    EXPECT_EQ(line.get(), std::nullopt);
    toasts.queueHint(message("three"), 1);
    EXPECT_EQ(line.get(), message("three"));
}

}  // namespace
}  // namespace gull
