#include "Engine/Views/Animated.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace gull {
namespace {

// Computed by bisection of the Bezier polynomial, and by Runge-Kutta integration of the spring's equation in
// 200,000 steps, in another language.
TEST(Curve, EasesAsTheBezierSays) {
    const TimingCurve out = TimingCurve::easeOut(2);
    const TimingCurve in = TimingCurve::easeIn(2);
    EXPECT_NEAR(out.progress(0.2), 0.16057215423753346, 1e-9);
    EXPECT_NEAR(out.progress(1.0), 0.6846431874274606, 1e-9);
    EXPECT_NEAR(out.progress(1.5), 0.906535349281175, 1e-9);
    EXPECT_NEAR(in.progress(0.5), 0.09346465071882482, 1e-9);
    EXPECT_NEAR(in.progress(1.8), 0.8394278457624664, 1e-9);
    for (const TimingCurve& curve : {out, in}) {
        EXPECT_EQ(curve.progress(-1), 0);
        EXPECT_EQ(curve.progress(0), 0);
        EXPECT_EQ(curve.progress(2), 1);
    }
}

TEST(Curve, SwingsAsTheSpringDoes) {
    const Spring slot{0.35, 0.6};
    EXPECT_NEAR(slot.displacement(-1, 0, 0.1), -0.29883675764119677, 1e-9);
    EXPECT_NEAR(slot.velocity(-1, 0, 0.1), 7.57333723653215, 1e-8);
    EXPECT_NEAR(slot.displacement(-1, 0, 0.25), 0.0830156944775234, 1e-9);
    const Spring tile{0.25, 0.7};
    EXPECT_NEAR(tile.displacement(0.4, 9, 0.12), 0.0636618100367593, 1e-9);
    EXPECT_NEAR(tile.velocity(0.4, 9, 0.12), -2.9149753309109543, 1e-8);
    const Spring critical{0.35, 1};
    EXPECT_NEAR(critical.displacement(-1, 5, 0.1), -0.3812203801913204, 1e-9);
    EXPECT_NEAR(critical.velocity(-1, 5, 0.1), 4.692397734197582, 1e-8);
}

TEST(Curve, WhatASpringHasLeftWhenItSettlesCannotBeSeen) {
    for (const Spring spring : {Spring{0.35, 0.6}, Spring{0.25, 0.7}, Spring{0.35, 1}}) {
        const double end = spring.settlingSeconds();
        for (double t = end; t < end + 1; t += 0.01) {
            EXPECT_LT(std::abs(spring.displacement(-1, 0, t)), 0.001) << spring.damping << " at " << t;
        }
    }
}

TEST(Animated, RestsExactlyAtItsGoalAndWaitsForItsDelay) {
    Animated value(0.1);
    EXPECT_FALSE(value.isMoving(5));
    value.moveTo(0.7, TimingCurve::easeOut(0.25), 5, 0.35);
    EXPECT_EQ(value.value(5.3), 0.1);
    EXPECT_TRUE(value.isMoving(5.3));
    EXPECT_GT(value.value(5.4), 0.1);
    EXPECT_EQ(value.value(5.61), 0.7);
    EXPECT_FALSE(value.isMoving(5.61));
    value.moveTo(-1.3, Spring{0.35, 0.6}, 6);
    EXPECT_EQ(value.value(9), -1.3);
    EXPECT_FALSE(value.isMoving(9));
}

TEST(Animated, TurnsAroundWithoutAJump) {
    Animated value(0);
    value.moveTo(1, Spring{0.35, 0.6}, 0);
    const double before = value.value(0.1);
    const double speed = (value.value(0.1) - value.value(0.0999)) / 0.0001;
    value.moveTo(0, Spring{0.35, 0.6}, 0.1);
    EXPECT_NEAR(value.value(0.1), before, 1e-12);
    EXPECT_NEAR((value.value(0.1001) - value.value(0.1)) / 0.0001, speed, 0.05);
    // Asking again for the same goal does not start over.
    const double later = value.value(0.3);
    value.moveTo(0, TimingCurve::easeIn(5), 0.2);
    EXPECT_EQ(value.value(0.3), later);
}

TEST(Animated, OvershootsUnlessMotionIsUnwanted) {
    const auto highest = [](const Curve& curve) {
        Animated value(0);
        value.moveTo(1, curve, 0);
        double top = 0;
        for (double t = 0; t < 2; t += 0.001) top = std::max(top, value.value(t));
        return top;
    };
    // exp(-pi d / sqrt(1 - d^2)) beyond the goal.
    EXPECT_NEAR(highest(Spring{0.35, 0.6}), 1.0947802248421548, 1e-4);
    EXPECT_LE(highest(withoutOvershoot(Spring{0.35, 0.6})), 1.0);
}

}  // namespace
}  // namespace gull
