#pragma once

#include "GullCore/Beach.h"
#include "GullCore/Rng.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace gull {

/// The plan of one beach of the campaign; its layout is drawn for every hunt.
struct BeachSpec {
    int number = 1;              ///< position in the campaign, from 1
    std::string_view name{};     ///< English, the catalogues' key; a text that lives as long as the program
    std::string_view tagline{};  ///< likewise
    std::vector<ItemKind> treasures{};  ///< in burial order; repeats allowed
    int junk = 0;                       ///< number of junk items
    double range = 0;                   ///< reach of the detector, in plot distance
    double tideSeconds = 0;             ///< hunt time before high tide
    int need = 0;                       ///< treasures to be found to pass
    int deep = 0;                       ///< number of treasures that lie deep, the most valuable first
    bool showsKind = true;              ///< false: only the rhythm of the ticks tells treasure from junk

    bool operator==(const BeachSpec&) const = default;
};

/// The eight beaches, easy to hard.
namespace Campaign {

const std::vector<BeachSpec>& beaches();
/// The beach of that number; the first or last one for numbers below or above the table.
const BeachSpec& beach(std::int64_t number);

}  // namespace Campaign

/// Turns a spec into a layout. The same state of the generator gives the same layout, bit for bit: the draws
/// and their order are part of the contract.
namespace Burial {

/// Nothing lies closer than this to the left, right or near edge of the plot.
inline constexpr double margin = 0.08;
/// Nothing lies beyond this y.
inline constexpr double farLimit = 0.9;
/// Initial minimum distance between two items; shrinks by `shrink` after each pass that found no room.
inline constexpr double separation = 0.2;
inline constexpr double shrink = 0.9;
/// Number of places tried for one item before the pass is abandoned.
inline constexpr int attempts = 400;

/// The items in plan order: treasures as the spec lists them, then junk: cap, can, nail and foil in turn.
/// `id` is the index. Advances `rng`: (x, y) for each attempt, then one depth for each item.
std::vector<BuriedItem> bury(const BeachSpec& spec, SplitMix64& rng);

}  // namespace Burial

}  // namespace gull
