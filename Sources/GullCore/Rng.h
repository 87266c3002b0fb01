#pragma once

#include <cstdint>

namespace gull {

/// The random generator for beaches: SplitMix64 by Steele, Lea and Flood. A plain value; a copy continues the
/// same sequence independently.
struct SplitMix64 {
    std::uint64_t state;

    explicit SplitMix64(std::uint64_t seed) : state(seed) {}
    /// Advances the state and returns the next output.
    std::uint64_t next();

    bool operator==(const SplitMix64&) const = default;
};

/// A double drawn uniformly from [a, b], both ends included. Takes one output of `rng`, rarely (1 in 2048)
/// more; layouts depend on how many.
double uniform(SplitMix64& rng, double a, double b);

}  // namespace gull
