#include "GullCore/Detector.h"

#include <algorithm>
#include <cmath>

namespace gull {

bool Reading::isTreasure() const {
    return item && gull::isTreasure(item->kind);
}

double Detector::reach(const BuriedItem& item) const {
    const double scale = gull::isTreasure(item.kind) ? 1 : junkRangeScale;
    return range * scale * (1 - 0.35 * item.depth);
}

double Detector::strength(const BuriedItem& item, const PlotPoint& at) const {
    const double distance = item.at.distance(at);
    const double limit = reach(item);
    if (limit <= 0 || distance >= limit) return 0;
    return (1 - 0.3 * item.depth) * std::pow(1 - distance / limit, 1.4);
}

Reading Detector::read(const PlotPoint& at, std::span<const BuriedItem> items) const {
    double best = 0;
    const BuriedItem* strongest = nullptr;
    for (const BuriedItem& item : items) {
        const double signal = strength(item, at);
        if (signal > best) {
            best = signal;
            strongest = &item;
        }
    }
    if (!strongest) return Reading::silent();
    return {best, *strongest, strongest->at.distance(at) <= pinpointRadius};
}

std::optional<BuriedItem> Detector::dig(const PlotPoint& at, std::span<const BuriedItem> items) const {
    const BuriedItem* nearest = nullptr;
    double least = 0;
    for (const BuriedItem& item : items) {
        const double distance = item.at.distance(at);
        if (distance <= digRadius && (!nearest || distance < least)) {
            nearest = &item;
            least = distance;
        }
    }
    if (!nearest) return std::nullopt;
    return *nearest;
}

double PulseClock::interval(double strength, bool isTreasure) {
    constexpr double ratio = 0.06875;  // fastest / slowest
    constexpr double junkSlowdown = 1.7;
    const double signal = strength <= 0 ? 0 : std::min(strength, 1.0);
    const double base = slowest * std::pow(ratio, signal);
    return isTreasure ? base : std::max(base * junkSlowdown, junkMinimum);
}

bool PulseClock::advance(double dt, double strength, bool isTreasure) {
    constexpr double faintest = 0.005;  // below it there is no signal
    if (strength <= faintest) {
        sinceLast_ = std::numeric_limits<double>::infinity();
        return false;
    }
    sinceLast_ += dt;
    if (sinceLast_ < interval(strength, isTreasure)) return false;
    sinceLast_ = 0;
    return true;
}

}  // namespace gull
