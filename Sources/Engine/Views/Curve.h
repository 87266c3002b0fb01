#pragma once

#include <variant>

namespace gull {

/// A cubic Bezier timing curve from (0, 0) to (1, 1): progress over time, both 0 to 1.
struct TimingCurve {
    double x1 = 0;
    double y1 = 0;
    double x2 = 1;
    double y2 = 1;
    double seconds = 0.25;

    static constexpr TimingCurve easeOut(double seconds) { return {0, 0, 0.58, 1, seconds}; }
    static constexpr TimingCurve easeIn(double seconds) { return {0.42, 0, 1, 1, seconds}; }

    /// Progress after `elapsed` seconds; exactly 0 before the start and exactly 1 from the end on.
    double progress(double elapsed) const;
};

/// A damped spring pulling toward its goal. `response` is the period of the undamped oscillation in seconds;
/// a damping fraction of 1 is critical: the fastest without overshoot.
struct Spring {
    double response = 0.35;
    double damping = 0.6;

    /// The spring's position relative to the goal, `elapsed` seconds after its release at `distance` (start
    /// minus goal) with `velocity` per second.
    double displacement(double distance, double velocity, double elapsed) const;
    double velocity(double distance, double velocity, double elapsed) const;
    /// After this many seconds the oscillation stays within a thousandth of `reach`, the larger of |distance|
    /// and |velocity| / frequency, which cannot be seen.
    double settlingSeconds() const;
};

using Curve = std::variant<TimingCurve, Spring>;

/// The curve for players who prefer reduced motion: springs do not overshoot, other curves are unchanged.
Curve withoutOvershoot(const Curve& curve);

}  // namespace gull
