#include "Engine/Views/Animated.h"

#include <cmath>

namespace gull {

void Animated::moveTo(double goal, const Curve& curve, double now, double delay) {
    if (goal == goal_) return;
    const double speed = delay > 0 ? 0 : velocity(now);
    from_ = value(now);
    startVelocity_ = speed;
    goal_ = goal;
    start_ = now + delay;
    curve_ = curve;
    moving_ = true;
}

void Animated::jumpTo(double value) {
    from_ = goal_ = value;
    startVelocity_ = 0;
    moving_ = false;
}

double Animated::value(double now) const {
    if (!isMoving(now)) return goal_;
    const double elapsed = now - start_;
    if (elapsed <= 0) return from_;
    if (const TimingCurve* timing = std::get_if<TimingCurve>(&curve_)) {
        return from_ + (goal_ - from_) * timing->progress(elapsed);
    }
    return goal_ + std::get<Spring>(curve_).displacement(from_ - goal_, startVelocity_, elapsed);
}

bool Animated::isMoving(double now) const {
    return moving_ && now - start_ < seconds();
}

double Animated::seconds() const {
    if (const TimingCurve* timing = std::get_if<TimingCurve>(&curve_)) return timing->seconds;
    return std::get<Spring>(curve_).settlingSeconds();
}

double Animated::velocity(double now) const {
    const Spring* spring = std::get_if<Spring>(&curve_);
    if (spring == nullptr || !isMoving(now) || now <= start_) return 0;
    return spring->velocity(from_ - goal_, startVelocity_, now - start_);
}

}  // namespace gull
