#pragma once

#include <cstdint>

namespace gull {

/// The random generator for textures and the speckle of the sand: 64-bit xorshift, 24 bits per draw.
struct Xorshift {
    std::uint64_t state;  ///< must not be 0

    explicit constexpr Xorshift(std::uint64_t seed) : state(seed) {}

    /// Uniform from 0 (inclusive) to 1 (exclusive).
    constexpr double unit() {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return static_cast<double>(state & 0xFFFFFF) * 0x1p-24;
    }
};

}  // namespace gull
