#include "GullCore/Rng.h"

namespace gull {
namespace {

__extension__ using Wide = unsigned __int128;

}  // namespace

std::uint64_t SplitMix64::next() {
    state += 0x9e3779b97f4a7c15u;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
    return z ^ (z >> 31);
}

// An integer from 0 to 2^53 by Lemire's nearly-divisionless method, then scaled. With 2^53 + 1 outcomes both
// ends of the range can come up.
double uniform(SplitMix64& rng, double a, double b) {
    constexpr std::uint64_t top = std::uint64_t{1} << 53;
    constexpr std::uint64_t outcomes = top + 1;
    constexpr std::uint64_t threshold = (0 - outcomes) % outcomes;  // (2^64 - outcomes) mod outcomes

    Wide product = Wide{rng.next()} * outcomes;
    while (static_cast<std::uint64_t>(product) < threshold) product = Wide{rng.next()} * outcomes;

    const auto drawn = static_cast<std::uint64_t>(product >> 64);
    if (drawn == top) return b;
    return (b - a) * (static_cast<double>(drawn) * 0x1p-53) + a;
}

}  // namespace gull
