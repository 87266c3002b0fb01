#include "Gullwick/Scene/Shoreline.h"

#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>

namespace gull {

namespace {

constexpr double seaward = -20;   // the water ends between here and Shoreline::landward
constexpr int halvings = 16;      // to half a thousandth
constexpr double rounding = 1.1;  // standard deviation of the smoothing, world units

/// Where the sand rises above `level`, going landward.
double crossing(double x, double level) {
    double low = seaward, high = Shoreline::landward;
    for (int step = 0; step < halvings; ++step) {
        const double middle = (low + high) / 2;
        (level <= Terrain::height(x, middle) ? high : low) = middle;
    }
    return (low + high) / 2;
}

}  // namespace

Shoreline::Shoreline(double level) {
    const int sides = static_cast<int>(std::ceil(3 * rounding / spacing));
    const int count = static_cast<int>(2 * reach / spacing) + 1;
    std::vector<double> crossings;
    for (int i = -sides; i < count + sides; ++i) crossings.push_back(crossing(-reach + i * spacing, level));
    std::vector<double> weights;
    double sum = 0;
    for (int i = -sides; i <= sides; ++i) {
        weights.push_back(std::exp(-0.5 * std::pow(i * spacing / rounding, 2)));
        sum += weights.back();
    }
    for (int i = 0; i < count; ++i) {
        double place = 0;
        for (std::size_t k = 0; k < weights.size(); ++k)
            place += weights[k] / sum * crossings[static_cast<std::size_t>(i) + k];
        places_.push_back(place);
    }
}

double Shoreline::z(double x) const {
    // A quadratic B-spline: its direction changes without a jump.
    const double at = std::clamp((x + reach) / spacing, 0.0, static_cast<double>(places_.size() - 1));
    const double nearest = std::round(at), off = at - nearest;
    const auto place = [&](double i) {
        return places_[static_cast<std::size_t>(std::clamp(i, 0.0, static_cast<double>(places_.size() - 1)))];
    };
    return place(nearest - 1) * 0.5 * (0.5 - off) * (0.5 - off) + place(nearest) * (0.75 - off * off) +
           place(nearest + 1) * 0.5 * (0.5 + off) * (0.5 + off);
}

}  // namespace gull
