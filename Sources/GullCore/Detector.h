#pragma once

#include "GullCore/Beach.h"

#include <limits>
#include <optional>
#include <span>

namespace gull {

/// What the coil senses at one point: only the strongest item, not a sum. Junk can mask a weaker treasure.
struct Reading {
    double strength = 0;             ///< 0: nothing; 1: a treasure on the surface right under the coil
    std::optional<BuriedItem> item;  ///< the source of the signal; empty if nothing is in range
    bool isPinpoint = false;         ///< the coil is within Detector::pinpointRadius of `item`

    static Reading silent() { return {}; }
    bool isTreasure() const;

    bool operator==(const Reading&) const = default;
};

/// The signal model. Distances are plot distances.
struct Detector {
    double range = 0;  ///< distance up to which a treasure on the surface is sensed

    static constexpr double junkRangeScale = 0.7;  ///< range for junk as a share of `range`
    static constexpr double pinpointRadius = 0.07;
    static constexpr double digRadius = 0.1;

    /// Distance up to which `item` is sensed; the deeper the item, the shorter.
    double reach(const BuriedItem& item) const;
    /// Signal of one item with the coil at `at`, 0 to 1.
    double strength(const BuriedItem& item, const PlotPoint& at) const;
    /// The strongest of `items`; of equals the first in the list.
    Reading read(const PlotPoint& at, std::span<const BuriedItem> items) const;
    /// The result of a dig: the nearest of `items` within digRadius, whatever its kind or depth; of equals
    /// the first in the list.
    std::optional<BuriedItem> dig(const PlotPoint& at, std::span<const BuriedItem> items) const;
};

/// Turns readings into ticks: faster for stronger signals, slower for junk. After silence the first signal
/// ticks immediately. A tick discards the rest of its frame, so ticks coincide with frames. The caller makes
/// the second tick of a junk pair, pairGap later. Assign a new clock to start over.
class PulseClock {
  public:
    static constexpr double slowest = 0.8;       ///< seconds between treasure ticks at the faintest signal
    static constexpr double fastest = 0.055;     ///< seconds between treasure ticks at full signal
    static constexpr double junkMinimum = 0.17;  ///< junk never ticks faster than this, in seconds
    static constexpr double pairGap = 0.055;     ///< seconds between the two ticks of a junk pair

    /// Seconds between ticks; `strength` is limited to 0..1.
    static double interval(double strength, bool isTreasure);
    /// Advances by `dt` seconds with this signal; true if a tick falls into the step.
    bool advance(double dt, double strength, bool isTreasure);

  private:
    double sinceLast_ = std::numeric_limits<double>::infinity();  // seconds; infinite after silence
};

}  // namespace gull
