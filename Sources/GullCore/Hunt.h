#pragma once

#include "GullCore/Detector.h"
#include "GullCore/Levels.h"
#include "GullCore/Progress.h"  // IWYU pragma: export: where the result of a hunt goes

#include <optional>
#include <variant>
#include <vector>

namespace gull {

namespace Scoring {

/// 0: fewer found than needed. 1: passed. 2: everything found, but also junk. 3: everything found and no
/// junk.
int stars(int found, int total, int need, int junkDug);

}  // namespace Scoring

/// One play of one beach: the items in the sand, what was dug up, the tide clock and the pings. A plain value
/// without clocks, frames or devices; hunt time advances only through advance() and ping().
/// It is over when every treasure is found (the clock stops) or the tide is in. From then on dig(), ping()
/// and advance() change nothing and return an empty result.
class Hunt {
  public:
    /// The cost of a ping in seconds of tide.
    static constexpr double pingCost = 5.0;

    struct Treasure {
        BuriedItem item;
        bool operator==(const Treasure&) const = default;
    };
    struct Junk {
        BuriedItem item;
        bool operator==(const Junk&) const = default;
    };
    struct Nothing {
        bool operator==(const Nothing&) const = default;
    };
    /// The result of a dig; Nothing also if the hunt is over.
    using DigOutcome = std::variant<Treasure, Junk, Nothing>;

    /// A hunt with a given layout.
    Hunt(BeachSpec spec, std::vector<BuriedItem> items);
    /// A hunt with a fresh layout drawn from `rng`, which advances.
    Hunt(const BeachSpec& spec, SplitMix64& rng);

    const BeachSpec& spec() const { return spec_; }
    const Detector& detector() const { return detector_; }
    /// Everything that was buried, in burial order; never changes.
    const std::vector<BuriedItem>& items() const { return items_; }
    const std::vector<BuriedItem>& found() const { return found_; }      ///< treasures, in the order dug
    const std::vector<BuriedItem>& junkDug() const { return junkDug_; }  ///< junk, in the order dug
    /// The places of all digs, including misses, in order.
    const std::vector<PlotPoint>& holes() const { return holes_; }
    double elapsed() const { return elapsed_; }  ///< hunt time used, in seconds; at most spec().tideSeconds
    int pings() const { return pings_; }

    /// The items still in the sand, in burial order. The reference is valid until the next dig.
    const std::vector<BuriedItem>& buried() const { return buried_; }
    std::vector<BuriedItem> buriedTreasures() const;
    int treasureCount() const;
    double timeLeft() const;      ///< seconds, never below 0
    double tideProgress() const;  ///< 0 low tide to 1 high tide
    bool isAllFound() const;
    bool isTideIn() const;
    bool isOver() const;
    int haul() const;  ///< worth of the treasures found
    int stars() const;

    /// The detector's reading of the items still buried.
    Reading reading(const PlotPoint& at) const;
    /// Advances hunt time by `dt` seconds; negative values count as 0.
    void advance(double dt);
    /// Digs a hole and brings up the nearest item within reach. Costs no time.
    DigOutcome dig(const PlotPoint& at);
    /// The nearest treasure still buried, at a cost of pingCost seconds of tide, charged in full even if
    /// fewer are left. Empty and free if the hunt is over.
    std::optional<BuriedItem> ping(const PlotPoint& from);

  private:
    BeachSpec spec_;
    Detector detector_;
    std::vector<BuriedItem> items_;
    std::vector<BuriedItem> buried_;  // items_ less found_ and junkDug_
    std::vector<BuriedItem> found_;
    std::vector<BuriedItem> junkDug_;
    std::vector<PlotPoint> holes_;
    double elapsed_ = 0;
    int pings_ = 0;
};

}  // namespace gull
