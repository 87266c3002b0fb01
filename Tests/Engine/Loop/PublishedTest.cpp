#include "Engine/Loop/Published.h"

#include <gtest/gtest.h>

#include <string>

namespace gull {
namespace {

TEST(Published, observersAreCalledBeforeEveryChangeAndSeeTheOldValue) {
    ChangeNotifier changes;
    Published<int> value(changes, 1);
    std::string seen;
    const auto observation = changes.observe([&] { seen += std::to_string(value.get()) + ' '; });
    value = 2;
    value = 2;
    EXPECT_EQ(value.mutate([](int& inside) { return ++inside * 10; }), 30);
    EXPECT_EQ(seen, "1 2 2 ");
    EXPECT_EQ(value, 3);
}

TEST(Published, observersMayComeAndGoDuringANotification) {
    ChangeNotifier changes;
    std::string log;
    ChangeNotifier::Observation first, second, third;
    first = changes.observe([&] {
        log += 'a';
        first.reset();
        second.reset();
        third = changes.observe([&] { log += 'c'; });
    });
    second = changes.observe([&] { log += 'b'; });
    changes.willChange();
    EXPECT_EQ(log, "a");
    changes.willChange();
    EXPECT_EQ(log, "ac");
}

}  // namespace
}  // namespace gull
