#include "GullCore/Hunt.h"

#include "Engine/Log/Require.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace gull {

int Scoring::stars(int found, int total, int need, int junkDug) {
    if (found < need) return 0;
    if (found < total) return 1;
    return junkDug > 0 ? 2 : 3;
}

Hunt::Hunt(BeachSpec spec, std::vector<BuriedItem> items)
    : spec_(std::move(spec)), detector_{spec_.range}, items_(std::move(items)), buried_(items_) {}

Hunt::Hunt(const BeachSpec& spec, SplitMix64& rng) : Hunt(spec, Burial::bury(spec, rng)) {}

std::vector<BuriedItem> Hunt::buriedTreasures() const {
    std::vector<BuriedItem> treasures = buried_;
    std::erase_if(treasures, [](const BuriedItem& item) { return !isTreasure(item.kind); });
    return treasures;
}

int Hunt::treasureCount() const {
    return static_cast<int>(spec_.treasures.size());
}

double Hunt::timeLeft() const {
    return std::max(spec_.tideSeconds - elapsed_, 0.0);
}

double Hunt::tideProgress() const {
    return std::min(elapsed_ / spec_.tideSeconds, 1.0);
}

bool Hunt::isAllFound() const {
    return found_.size() == spec_.treasures.size();
}

bool Hunt::isTideIn() const {
    return elapsed_ >= spec_.tideSeconds;
}

bool Hunt::isOver() const {
    return isAllFound() || isTideIn();
}

int Hunt::haul() const {
    int sum = 0;
    for (const BuriedItem& item : found_) sum += value(item.kind);
    return sum;
}

int Hunt::stars() const {
    return Scoring::stars(static_cast<int>(found_.size()), treasureCount(), spec_.need,
                          static_cast<int>(junkDug_.size()));
}

Reading Hunt::reading(const PlotPoint& at) const {
    return detector_.read(at, buried_);
}

void Hunt::advance(double dt) {
    if (isOver()) return;
    elapsed_ = std::min(elapsed_ + std::max(dt, 0.0), spec_.tideSeconds);
}

Hunt::DigOutcome Hunt::dig(const PlotPoint& at) {
    if (isOver()) return Nothing{};
    holes_.push_back(at);
    const auto item = detector_.dig(at, buried_);
    if (!item) return Nothing{};
    std::erase(buried_, *item);
    if (!isTreasure(item->kind)) {
        junkDug_.push_back(*item);
        return Junk{*item};
    }
    found_.push_back(*item);
    return Treasure{*item};
}

std::optional<BuriedItem> Hunt::ping(const PlotPoint& from) {
    if (isOver()) return std::nullopt;
    const auto candidates = buriedTreasures();
    const auto nearest = std::min_element(
        candidates.begin(), candidates.end(),
        [&](const BuriedItem& a, const BuriedItem& b) { return a.at.distance(from) < b.at.distance(from); });
    if (nearest == candidates.end()) return std::nullopt;
    require(pings_ < std::numeric_limits<int>::max(), "one more ping than can be counted ({})", pings_);
    ++pings_;
    elapsed_ = std::min(elapsed_ + pingCost, spec_.tideSeconds);
    return *nearest;
}

}  // namespace gull
