#include "GullCore/Levels.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <optional>

namespace gull::Burial {
namespace {

/// The kinds to bury, before anything is drawn.
struct PlanEntry {
    ItemKind kind;
    bool isDeep = false;
};

std::vector<PlanEntry> makePlan(const BeachSpec& spec) {
    std::vector<PlanEntry> plan;
    for (const ItemKind kind : spec.treasures) plan.push_back({kind});

    std::vector<std::size_t> byWorth(plan.size());
    std::iota(byWorth.begin(), byWorth.end(), std::size_t{0});
    std::stable_sort(byWorth.begin(), byWorth.end(),
                     [&](std::size_t a, std::size_t b) { return value(plan[a].kind) > value(plan[b].kind); });
    const auto deep = std::min(byWorth.size(), static_cast<std::size_t>(std::max(spec.deep, 0)));
    for (std::size_t i = 0; i < deep; ++i) plan[byWorth[i]].isDeep = true;

    const auto& junk = junkKinds();
    for (int i = 0; i < spec.junk; ++i) plan.push_back({junk[static_cast<std::size_t>(i) % junk.size()]});
    return plan;
}

/// A free place at least `apart` from all of `taken`; empty when no attempt finds one.
std::optional<PlotPoint> findPlace(const std::vector<PlotPoint>& taken, double apart, SplitMix64& rng) {
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const double x = uniform(rng, margin, 1 - margin);
        const double y = uniform(rng, margin, farLimit);
        const PlotPoint place{x, y};
        const bool isFree = std::all_of(taken.begin(), taken.end(), [&](const PlotPoint& other) {
            return place.distance(other) >= apart;
        });
        if (isFree) return place;
    }
    return std::nullopt;
}

/// One pass over all `count` items; empty if one of them found no place.
std::optional<std::vector<PlotPoint>> placeAll(std::size_t count, double apart, SplitMix64& rng) {
    std::vector<PlotPoint> places;
    places.reserve(count);
    while (places.size() < count) {
        const auto place = findPlace(places, apart, rng);
        if (!place) return std::nullopt;
        places.push_back(*place);
    }
    return places;
}

}  // namespace

std::vector<BuriedItem> bury(const BeachSpec& spec, SplitMix64& rng) {
    const std::vector<PlanEntry> plan = makePlan(spec);

    double apart = separation;
    auto places = placeAll(plan.size(), apart, rng);
    while (!places) {
        apart *= shrink;
        places = placeAll(plan.size(), apart, rng);
    }

    std::vector<BuriedItem> items;
    items.reserve(plan.size());
    for (std::size_t i = 0; i < plan.size(); ++i) {
        const double depth = plan[i].isDeep ? uniform(rng, 0.7, 0.9) : uniform(rng, 0.0, 0.3);
        items.push_back({static_cast<std::int64_t>(i), plan[i].kind, (*places)[i], depth});
    }
    return items;
}

}  // namespace gull::Burial
