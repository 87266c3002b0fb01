#include "Engine/Loop/Task.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace gull {
namespace {

Task<int> addLater(MainLoop& loop, int a, int b) {
    co_await sleep(loop, 0.5);
    co_return a + b;
}

Task<std::string> sum(MainLoop& loop) {
    int total = 0;
    for (int i = 1; i <= 3; ++i) total = co_await addLater(loop, total, i);
    co_return std::to_string(total);
}

TEST(Task, waitsOnTheLoopAndHandsItsResultOn) {
    ManualClock clock;
    MainLoop loop(clock);
    std::optional<std::string> result;
    double finished = 0;
    auto task = sum(loop);
    EXPECT_TRUE(std::isinf(loop.nextDue()));  // nothing happens before the start
    task.start([&](std::string value) {
        result = value;
        finished = loop.now();
    });
    loop.turn(clock, 1.4);
    EXPECT_FALSE(result);
    EXPECT_FALSE(task.isDone());
    loop.turn(clock, 1);
    EXPECT_EQ(result, "6");
    EXPECT_TRUE(task.isDone());
    EXPECT_NEAR(finished, 1001.5, 1e-9);
}

Task<int> holdForever(MainLoop& loop, std::shared_ptr<int> held) {
    co_await sleep(loop, 1e9);
    co_return *held;
}

Task<int> outer(MainLoop& loop, std::shared_ptr<int> held) {
    const int value = co_await holdForever(loop, held);
    co_return value;
}

TEST(Task, destroyingItReleasesTheWholeChainAndItsSleep) {
    ManualClock clock;
    MainLoop loop(clock);
    const auto held = std::make_shared<int>(1);
    {
        auto task = outer(loop, held);
        task.start([](int) { FAIL(); });
        EXPECT_GT(held.use_count(), 1);
    }
    EXPECT_EQ(held.use_count(), 1);
    loop.turn(clock, 2e9);
}

TEST(Task, theCompletionMayDestroyTheTask) {
    ManualClock clock;
    MainLoop loop(clock);
    int result = 0;
    std::optional<Task<int>> task = addLater(loop, 20, 22);
    task->start([&](int value) {
        task.reset();
        result = value;
    });
    loop.turn(clock, 1);
    EXPECT_EQ(result, 42);
}

Task<> count(MainLoop& loop, int& counter) {
    for (;;) {
        co_await sleep(loop, 0);
        if (++counter == 3) co_return;
    }
}

TEST(Task, zeroSleepsPassWithinOnePassOfTheLoop) {
    ManualClock clock;
    MainLoop loop(clock);
    int counter = 0;
    bool ended = false;
    auto task = count(loop, counter);
    task.start([&] { ended = true; });
    EXPECT_EQ(counter, 0);
    loop.runDue();
    EXPECT_EQ(counter, 3);
    EXPECT_TRUE(ended);
}

Task<int> fails() {
    throw std::runtime_error("nobody catches this");
    co_return 0;
}

TEST(TaskDeathTest, anExceptionThatLeavesATaskStopsTheProgram) {
    EXPECT_DEATH(fails().start([](int) {}), "nobody catches this");
}

}  // namespace
}  // namespace gull
