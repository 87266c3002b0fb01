#pragma once

#include "GullCore/Beach.h"
#include "GullCore/Rng.h"

#include <cstdint>
#include <string>
#include <vector>

namespace gull {

/// One beach of the campaign, as a plan: what is buried there is drawn afresh for every hunt.
struct BeachSpec {
    int number = 1;  ///< position in the campaign, from 1
    std::string name{};
    std::string tagline{};
    std::vector<ItemKind> treasures{};  ///< in burial order; repeats allowed
    int junk = 0;                       ///< how many junk items
    double range = 0;                   ///< reach of the detector, in plot distance
    double tideSeconds = 0;             ///< hunt time before high tide
    int need = 0;                       ///< treasures to be found to pass
    int deep = 0;                       ///< how many treasures lie deep, the most valuable first
    bool showsKind = true;              ///< false: only the rhythm of the ticks tells treasure from junk

    bool operator==(const BeachSpec&) const = default;
};

/// The eight beaches, easy to hard.
namespace Campaign {

const std::vector<BeachSpec>& beaches();
/// The beach of that number; the first or the last one for numbers below or above the table's.
const BeachSpec& beach(std::int64_t number);

}  // namespace Campaign

/// Turns a spec into a layout. The same state of the generator gives the same layout, bit for bit: every draw
/// and its order is part of the contract.
namespace Burial {

/// Nothing lies closer than this to the left, right or near edge of the plot.
inline constexpr double margin = 0.08;
/// Nothing lies beyond this y.
inline constexpr double farLimit = 0.9;
/// Least distance between two items, at first; shrinks by `shrink` after each pass that found no room.
inline constexpr double separation = 0.2;
inline constexpr double shrink = 0.9;
/// Places tried for one item before the pass is given up.
inline constexpr int attempts = 400;

/// The items in plan order: treasures as the spec lists them, then junk, cap can nail foil in turn. `id` is
/// the index. Advances `rng`: (x, y) for each attempt, then one depth for each item.
std::vector<BuriedItem> bury(const BeachSpec& spec, SplitMix64& rng);

}  // namespace Burial

}  // namespace gull
