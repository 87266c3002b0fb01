#pragma once

#include <cstdint>

namespace gull {

/// The generator behind every beach: SplitMix64 of Steele, Lea and Flood. A value; a copy goes on with the
/// same sequence on its own.
struct SplitMix64 {
    std::uint64_t state;

    explicit SplitMix64(std::uint64_t seed) : state(seed) {}
    /// The next output; moves the state on.
    std::uint64_t next();

    bool operator==(const SplitMix64&) const = default;
};

/// A double drawn evenly from [a, b], both ends included. Takes one output of `rng`, rarely (1 in 2048) more:
/// how many is part of what a seed means.
double uniform(SplitMix64& rng, double a, double b);

}  // namespace gull
