#include "Engine/Loop/Published.h"

#include <gtest/gtest.h>

#include <string>

namespace gull {
namespace {

TEST(Published, observersAreCalledBeforeEveryChangeAndSeeTheOldValue) {
    ChangeNotifier changes;
    Published<int> value(changes, 1);
    std::string seen;
    changes.observe([&] { seen += std::to_string(value.get()) + ' '; });
    value = 2;
    value = 2;
    EXPECT_EQ(value.mutate([](int& inside) { return ++inside * 10; }), 30);
    EXPECT_EQ(seen, "1 2 2 ");
    EXPECT_EQ(value, 3);
}

TEST(Published, observersMayComeAndGoDuringANotification) {
    ChangeNotifier changes;
    std::string log;
    ChangeNotifier::ObserverId first = 0, second = 0;
    first = changes.observe([&] {
        log += 'a';
        changes.stopObserving(first);
        changes.stopObserving(second);
        changes.observe([&] { log += 'c'; });
    });
    second = changes.observe([&] { log += 'b'; });
    changes.willChange();
    EXPECT_EQ(log, "a");
    changes.willChange();
    EXPECT_EQ(log, "ac");
    changes.stopObserving(99);
}

}  // namespace
}  // namespace gull
