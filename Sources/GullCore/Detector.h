#pragma once

#include "GullCore/Beach.h"

#include <limits>
#include <optional>
#include <span>

namespace gull {

/// What the coil senses at one point: the strongest item only, not a sum. Junk can mask a weaker treasure.
struct Reading {
    double strength = 0;             ///< 0 nothing, 1 a treasure on the surface right under the coil
    std::optional<BuriedItem> item;  ///< where the signal comes from; empty when nothing is in reach
    bool isPinpoint = false;         ///< the coil is within Detector::pinpointRadius of `item`

    static Reading silent() { return {}; }
    bool isTreasure() const;

    bool operator==(const Reading&) const = default;
};

/// The signal model. Distances are the plot's.
struct Detector {
    double range = 0;  ///< how far away a treasure on the surface is sensed

    static constexpr double junkRangeScale = 0.7;  ///< junk is sensed only this much as far
    static constexpr double pinpointRadius = 0.07;
    static constexpr double digRadius = 0.1;

    /// How far away `item` is sensed; deeper means nearer.
    double reach(const BuriedItem& item) const;
    /// Signal of one item with the coil at `at`, 0 to 1.
    double strength(const BuriedItem& item, const PlotPoint& at) const;
    /// The strongest of `items`; of equals the first in the list.
    Reading read(const PlotPoint& at, std::span<const BuriedItem> items) const;
    /// What a spade brings up: the nearest of `items` within digRadius, whatever its kind or depth; of equals
    /// the first in the list.
    std::optional<BuriedItem> dig(const PlotPoint& at, std::span<const BuriedItem> items) const;
};

/// Turns readings into ticks: faster as the signal grows, slower for junk. After silence the first signal
/// ticks at once. A tick drops the rest of its frame, so ticks land on frames. The second tick of a junk pair
/// is the caller's, pairGap later. A new clock has heard nothing: assign one to start over.
class PulseClock {
  public:
    static constexpr double slowest = 0.8;       ///< seconds between treasure ticks at the faintest signal
    static constexpr double fastest = 0.055;     ///< seconds between treasure ticks at full signal
    static constexpr double junkMinimum = 0.17;  ///< junk never ticks faster than this, in seconds
    static constexpr double pairGap = 0.055;     ///< seconds between the two ticks of a junk pair

    /// Seconds between ticks; `strength` is limited to 0..1.
    static double interval(double strength, bool isTreasure);
    /// Moves on by `dt` seconds under this signal; true when a tick falls into the step.
    bool advance(double dt, double strength, bool isTreasure);

  private:
    double sinceLast_ = std::numeric_limits<double>::infinity();  // seconds; infinite after silence
};

}  // namespace gull
