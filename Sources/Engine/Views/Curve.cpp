#include "Engine/Views/Curve.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace gull {

namespace {

/// One component of the Bezier curve with end points 0 and 1 at parameter t.
double bezier(double a, double b, double t) {
    const double u = 1 - t;
    return 3 * u * u * t * a + 3 * u * t * t * b + t * t * t;
}

}  // namespace

double TimingCurve::progress(double elapsed) const {
    if (elapsed <= 0) return 0;
    if (elapsed >= seconds) return 1;
    const double x = elapsed / seconds;
    // x increases with the parameter while x1 and x2 lie in 0 to 1, so bisection finds it.
    double low = 0;
    double high = 1;
    for (int i = 0; i < 40; ++i) {
        const double middle = (low + high) / 2;
        (bezier(x1, x2, middle) < x ? low : high) = middle;
    }
    return bezier(y1, y2, (low + high) / 2);
}

// x'' + 2 d w x' + w^2 x = 0 with w = 2 pi / response: below critical damping a decaying cosine of frequency
// w sqrt(1 - d^2), at or above it the critically damped (1 + bt) e^(-wt).
double Spring::displacement(double distance, double velocity, double elapsed) const {
    const double w = 2 * std::numbers::pi / response;
    if (damping >= 1) return (distance + (velocity + w * distance) * elapsed) * std::exp(-w * elapsed);
    const double decay = damping * w;
    const double swing = w * std::sqrt(1 - damping * damping);
    const double b = (velocity + decay * distance) / swing;
    return std::exp(-decay * elapsed) *
           (distance * std::cos(swing * elapsed) + b * std::sin(swing * elapsed));
}

double Spring::velocity(double distance, double velocity, double elapsed) const {
    const double w = 2 * std::numbers::pi / response;
    if (damping >= 1) {
        const double b = velocity + w * distance;
        return (b - w * (distance + b * elapsed)) * std::exp(-w * elapsed);
    }
    const double decay = damping * w;
    const double swing = w * std::sqrt(1 - damping * damping);
    const double b = (velocity + decay * distance) / swing;
    const double cosine = std::cos(swing * elapsed);
    const double sine = std::sin(swing * elapsed);
    return std::exp(-decay * elapsed) *
           ((b * swing - decay * distance) * cosine - (distance * swing + decay * b) * sine);
}

double Spring::settlingSeconds() const {
    const double w = 2 * std::numbers::pi / response;
    // The envelope e^(-d w t) falls to a thousandth at ln(1000) / (d w); the critical one has a factor 1 +
    // wt.
    return (damping >= 1 ? 9.3 : 7.3 / damping) / w;
}

Curve withoutOvershoot(const Curve& curve) {
    if (const Spring* spring = std::get_if<Spring>(&curve)) {
        return Spring{spring->response, std::max(spring->damping, 1.0)};
    }
    return curve;
}

}  // namespace gull
