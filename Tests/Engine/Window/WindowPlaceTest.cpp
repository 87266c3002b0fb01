#include "Engine/Window/WindowPlace.h"

#include <gtest/gtest.h>

namespace gull {
namespace {

constexpr ScreenRect laptop{0, 28, 1366, 740};  // less a panel
constexpr ScreenRect beside{1366, 0, 1920, 1080};

ScreenRect first(const ScreenRect& screen, const PlaceRules& rules = {}) {
    return placed({}, {&screen, 1}, rules);
}
ScreenRect again(const WindowPlace& place, std::vector<ScreenRect> screens, const PlaceRules& rules = {}) {
    return placed(place, screens, rules);
}
bool holds(const ScreenRect& outer, const ScreenRect& inner, int frame) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
           inner.y + frame + inner.height <= outer.y + outer.height;
}

TEST(WindowPlaceTest, AFirstWindowFitsTheFreePartOfTheScreenInItsShape) {
    EXPECT_EQ(first({0, 0, 1920, 1080}), (ScreenRect{340, 120, 1240, 800}));
    const ScreenRect small = first(laptop);
    EXPECT_TRUE(holds(laptop, small, 40));
    EXPECT_NEAR(1.0 * small.width / small.height, 1240.0 / 800, 0.01);
    EXPECT_GT(small.height, 690);
    PlaceRules doubled;
    doubled.unitsPerPoint = 2;
    const ScreenRect fine{0, 0, 2560, 1544};
    EXPECT_TRUE(holds(fine, first(fine, doubled), 80));
    EXPECT_TRUE(holds({0, 0, 640, 480}, first({0, 0, 640, 480}), 40)) << "smaller than the least size";
    EXPECT_EQ(placed({}, {}, {}), (ScreenRect{0, 0, 1240, 800})) << "nobody tells of a screen";
}

TEST(WindowPlaceTest, ARememberedWindowReturnsWhereItCanBeReached) {
    const WindowPlace stood{1000, 700, WindowPlace::Corner{1500, 100}, false};
    EXPECT_EQ(again(stood, {laptop, beside}), (ScreenRect{1500, 100, 1000, 700}));
    const ScreenRect moved = again(stood, {laptop});
    EXPECT_TRUE(holds(laptop, moved, 40)) << "its screen is gone";
    EXPECT_EQ(again({1000, 640, WindowPlace::Corner{-940, 40}, false}, {laptop}).x, -940)
        << "60 points are there";
    EXPECT_GE(again({1000, 640, WindowPlace::Corner{-990, 40}, false}, {laptop}).x, 0);
    EXPECT_GE(again({1000, 640, WindowPlace::Corner{100, 800}, false}, {laptop}).y, 28);
    EXPECT_LE(again({1000, 640, WindowPlace::Corner{100, -500}, false}, {laptop}).height, 640);
    EXPECT_GE(again({1000, 640, WindowPlace::Corner{100, -500}, false}, {laptop}).y, 28)
        << "no title to grab";
    const ScreenRect shrunk = again({3000, 2000, WindowPlace::Corner{0, 28}, false}, {laptop});
    EXPECT_TRUE(holds(laptop, shrunk, 40));
    EXPECT_EQ(again({10, 10, {}, false}, {beside}).width, 860) << "never below the least size";
}

TEST(WindowPlaceTest, IsKeptAsTextAndNonsenseIsNone) {
    for (const WindowPlace& place : {WindowPlace{1240, 800, {}, false}, WindowPlace{900, 600, {}, true},
                                     WindowPlace{900, 600, WindowPlace::Corner{-30, 40}, true}})
        EXPECT_EQ(windowPlace(text(place)), place) << text(place);
    for (const char* none : {"", "wide", "0x800", "1240", "-5x800", "999999999999x800"})
        EXPECT_FALSE(windowPlace(none)) << none;
    EXPECT_FALSE(windowPlace("900x600+9999999+1")->corner);
}

TEST(WindowPlaceTest, AWindowBelowTheLeastSizeShowsAllInSmallerPoints) {
    EXPECT_EQ(fittingUnits(1240, 800, {}), 1);
    EXPECT_EQ(fittingUnits(430, 800, {}), 0.5);
    EXPECT_EQ(fittingUnits(1240, 280, {}), 0.5);
    EXPECT_GT(fittingUnits(0, 0, {}), 0);
    PlaceRules doubled;
    doubled.unitsPerPoint = 2;
    EXPECT_EQ(fittingUnits(1720, 1120, doubled), 2);
    EXPECT_EQ(fittingUnits(860, 1120, doubled), 1);
}

}  // namespace
}  // namespace gull
