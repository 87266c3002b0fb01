#include "Engine/Loop/MainLoop.h"

#include "Engine/Loop/DelayedWork.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <string>

namespace gull {
namespace {

struct MainLoopTest : testing::Test {
    ManualClock clock;
    MainLoop loop{clock};
    std::string log;

    std::function<void()> write(char letter) {
        return [this, letter] { log += letter; };
    }
};

TEST_F(MainLoopTest, runsWorkByDueTimeAndThenByOrderOfScheduling) {
    loop.post(0.2, write('c'));
    loop.post(0.1, write('a'));
    loop.post(0.2, write('d'));
    loop.post(0.1, write('b'));
    loop.post(0.3, write('e'));
    EXPECT_DOUBLE_EQ(loop.nextDue(), 1000.1);
    loop.turn(clock, 0.25);
    EXPECT_EQ(log, "abcd");
    EXPECT_DOUBLE_EQ(clock.now(), 1000.25);
    clock.moveTo(1002);
    loop.runDue();
    EXPECT_EQ(log, "abcde");
    EXPECT_TRUE(std::isinf(loop.nextDue()));
}

TEST_F(MainLoopTest, eachPieceOfWorkSeesItsOwnDueTime) {
    double seen = 0;
    loop.post(0.3, [&] { loop.post(0.3, [&] { seen = loop.now(); }); });
    loop.turn(clock, 5);
    EXPECT_DOUBLE_EQ(seen, 1000.6);
    EXPECT_DOUBLE_EQ(loop.now(), 1005);
}

TEST_F(MainLoopTest, workScheduledForNowRunsInTheSamePassAndLaterWorkDoesNot) {
    loop.post(0, [this] {
        write('a')();
        loop.post(0, write('b'));
        loop.post(-1, write('c'));
        loop.post(0.001, write('x'));
    });
    loop.runDue();
    EXPECT_EQ(log, "abc");
}

TEST_F(MainLoopTest, aLateRepeatingTimerRunsOnceAndKeepsItsPhase) {
    int count = 0;
    const auto timer = loop.every(0.25, [&] { ++count; });
    loop.turn(clock, 1.0);
    EXPECT_EQ(count, 4);
    clock.moveTo(1003.6);  // ten intervals late
    loop.runDue();
    EXPECT_EQ(count, 5);
    EXPECT_NEAR(loop.nextDue(), 1003.75, 1e-9);
    loop.runDue();
    EXPECT_EQ(count, 5);
}

TEST_F(MainLoopTest, aRepeatingTimerThatIsSlowerThanItsIntervalDoesNotStarveTheCaller) {
    int count = 0;
    const auto timer = loop.every(0.01, [&] {
        ++count;
        clock.moveTo(clock.now() + 1);
    });
    clock.moveTo(1000.01);
    loop.runDue();
    EXPECT_EQ(count, 1);
}

TEST_F(MainLoopTest, aDroppedOrReplacedOrCancelledHandleCallsItsWorkOff) {
    { const auto dropped = loop.after(0.1, write('x')); }
    auto replaced = loop.after(0.1, write('y'));
    replaced = loop.after(0.1, write('a'));
    auto cancelled = loop.after(0.1, write('z'));
    cancelled.cancel();
    EXPECT_FALSE(cancelled.isPending());
    EXPECT_TRUE(replaced.isPending());
    auto moved = std::move(replaced);
    loop.turn(clock, 1);
    EXPECT_EQ(log, "a");
    EXPECT_FALSE(moved.isPending());
}

TEST_F(MainLoopTest, workMayCancelItselfAndItsNeighbours) {
    std::optional<MainLoop::Timer> self, neighbour;
    const auto captured = std::make_shared<int>(7);
    self = loop.every(0.1, [&, captured] {
        self.reset();
        neighbour.reset();
        log += static_cast<char>('0' + *captured);  // the work's captures still exist
    });
    neighbour = loop.after(0.1, write('x'));
    loop.turn(clock, 1);
    EXPECT_EQ(log, "7");
    EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(MainLoopTest, handlesMayOutliveTheLoop) {
    MainLoop::Timer timer;
    {
        MainLoop shortLived(clock);
        timer = shortLived.after(1, write('x'));
    }
    EXPECT_FALSE(timer.isPending());
}

TEST_F(MainLoopTest, quitStopsTheTurningAtOnceAndKeepsItsStatus) {
    loop.post(0.1, [this] { loop.quit(3); });
    loop.post(0.1, write('x'));
    loop.turn(clock, 9);
    EXPECT_EQ(log, "");
    EXPECT_TRUE(loop.quitting());
    EXPECT_EQ(loop.exitStatus(), 3);
    EXPECT_DOUBLE_EQ(clock.now(), 1000.1);
}

TEST(MainLoop, sleepsOnTheUptimeClockUntilItQuitsOrHasNothingLeft) {
    const UptimeClock clock;
    MainLoop loop(clock);
    const double start = clock.now();
    int count = 0;
    const auto timer = loop.every(0.005, [&] {
        if (++count == 4) loop.quit(2);
    });
    EXPECT_EQ(loop.runUntilQuit(), 2);
    EXPECT_EQ(count, 4);
    EXPECT_GE(clock.now() - start, 0.0199);

    MainLoop idle(clock);
    EXPECT_EQ(idle.runUntilQuit(), 0);
}

TEST_F(MainLoopTest, delayedWorkIsCalledOffWholesaleEvenFromWithin) {
    DelayedWork work(loop);
    work.after(0.1, write('a'));
    work.after(0.2, [&] {
        work.cancelPending();
        work.after(0.1, write('b'));
    });
    work.after(0.2, write('x'));
    EXPECT_EQ(work.pendingCount(), 3u);
    loop.turn(clock, 0.15);
    EXPECT_EQ(work.pendingCount(), 3u);  // finished work is forgotten only when everything is cancelled
    loop.turn(clock, 1);
    EXPECT_EQ(log, "ab");
    EXPECT_EQ(work.pendingCount(), 1u);
    for (int i = 0; i < 64; ++i) work.after(1, write('x'));
    EXPECT_EQ(work.pendingCount(), 65u);
    work.cancelPending();
    loop.turn(clock, 2);
    EXPECT_EQ(log, "ab");
}

TEST(ManualClock, neverGoesBackwards) {
    ManualClock clock(5);
    clock.moveTo(4);
    EXPECT_EQ(clock.now(), 5);
    clock.moveTo(6);
    EXPECT_EQ(clock.now(), 6);
}

TEST_F(MainLoopTest, inAPauseTimeStandsAndNothingIsLost) {
    int beats = 0;
    std::vector<double> once;
    const auto timer = loop.every(1, [&] { ++beats; });
    loop.post(2.5, [&] { once.push_back(loop.now()); });
    const double start = loop.now();
    loop.turn(clock, 1.5);
    loop.pause();
    loop.pause();
    loop.turn(clock, 50);
    EXPECT_EQ(loop.now(), start + 1.5);
    EXPECT_TRUE(std::isinf(loop.nextDue()));
    loop.runDue();
    EXPECT_EQ(beats, 1);
    loop.resume();
    loop.resume();
    loop.turn(clock, 2);
    EXPECT_EQ(beats, 3) << "on the beat it had";
    ASSERT_EQ(once.size(), 1U);
    EXPECT_NEAR(once[0], start + 2.5, 1e-9);
    EXPECT_NEAR(loop.now(), start + 3.5, 1e-9);
}

}  // namespace
}  // namespace gull
