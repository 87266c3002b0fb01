#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace gull {

/// A point of the plot, the patch of sand that the detector sweeps: x runs across it from 0 (left) to 1, y
/// into it from 0 (near edge) to 1 (seaward edge). Nothing forces a point into that square.
struct PlotPoint {
    double x = 0;
    double y = 0;

    /// The only distance in the rules, in units of the plot's depth; a circle in it is a true circle on the
    /// sand.
    double distance(const PlotPoint& to) const;
    /// The nearest point inside the plot. A NaN stays NaN.
    PlotPoint clamped() const;

    bool operator==(const PlotPoint&) const = default;
};

namespace Plot {
/// Width of the plot divided by its depth.
inline constexpr double aspect = 1.6;
}  // namespace Plot

/// From a finger on the trackpad to a point on the plot.
namespace PadMap {

/// Dead band along each side of the pad, as a fraction of the side; a finger in it is at the plot's edge.
inline constexpr double inset = 0.05;

/// `nx` and `ny`: position on the pad, 0 to 1 from its near left corner. Must not be NaN.
PlotPoint plotPoint(double nx, double ny);

}  // namespace PadMap

/// Everything that can be buried in the sand: seven treasures, then four kinds of junk.
enum class ItemKind : std::uint8_t { coin, ring, watch, key, gem, compass, chest, cap, can, nail, foil };

/// The kind's identifier in every text form, e.g. "coin".
std::string_view rawValue(ItemKind kind);
/// The kind with exactly this raw value, if there is one.
std::optional<ItemKind> itemKind(std::string_view rawValue);
/// The name shown to the player, in English, e.g. "Gold doubloon".
std::string_view name(ItemKind kind);
/// Worth in points; 0 for junk. No two treasures are worth the same.
int value(ItemKind kind);
bool isTreasure(ItemKind kind);

/// All kinds in order.
const std::array<ItemKind, 11>& allKinds();
/// The junk kinds in the order in which burial deals them out.
const std::array<ItemKind, 4>& junkKinds();

/// One thing in the sand. Items are equal if all four fields are; a buried item never changes.
struct BuriedItem {
    std::int64_t id = 0;  ///< index in the burial plan, unique within one hunt
    ItemKind kind = ItemKind::coin;
    PlotPoint at;
    double depth = 0;  ///< 0 at the surface; items are buried down to 0.9

    bool operator==(const BuriedItem&) const = default;
};

}  // namespace gull
