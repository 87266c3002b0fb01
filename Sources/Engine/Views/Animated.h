#pragma once

#include "Engine/Views/Curve.h"

namespace gull {

/// A number that moves to its goal along a curve. It has no clock: the caller passes the time (seconds, any
/// origin, the same for all calls). From the end of the curve on it equals its goal exactly.
class Animated {
  public:
    Animated() = default;
    explicit Animated(double value) : from_(value), goal_(value) {}

    /// Moves from its value at `now` to `goal`, beginning at now + `delay`. A spring keeps its current speed.
    /// Does nothing if it is already moving to `goal`.
    void moveTo(double goal, const Curve& curve, double now, double delay = 0);
    /// Jumps to `value` and stays there.
    void jumpTo(double value);

    double value(double now) const;
    double goal() const { return goal_; }
    bool isMoving(double now) const;

  private:
    double seconds() const;
    double velocity(double now) const;

    double from_ = 0;
    double goal_ = 0;
    double start_ = 0;
    double startVelocity_ = 0;
    bool moving_ = false;
    Curve curve_;
};

}  // namespace gull
