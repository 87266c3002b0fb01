#pragma once

namespace gull {

/// sRGB, each component 0 to 1, alpha not premultiplied.
struct Colour {
    double r = 0;
    double g = 0;
    double b = 0;
    double a = 1;

    constexpr Colour withAlpha(double alpha) const { return {r, g, b, alpha}; }
    constexpr bool operator==(const Colour&) const = default;
};

}  // namespace gull
