#pragma once

#include "Engine/Raster/Colour.h"

namespace gull {

/// An opaque sRGB colour, each component 0 to 1.
struct RGB {
    double r = 0;
    double g = 0;
    double b = 0;

    constexpr bool operator==(const RGB&) const = default;
    constexpr Colour colour(double alpha = 1) const { return {r, g, b, alpha}; }
    /// This colour moved toward `other` by `fraction`.
    constexpr RGB mixed(const RGB& other, double fraction) const {
        return {r + (other.r - r) * fraction, g + (other.g - g) * fraction, b + (other.b - b) * fraction};
    }
    constexpr RGB scaled(double factor) const { return {r * factor, g * factor, b * factor}; }
};

/// The colours and the light of one beach: late morning, noon, sunset or an overcast day.
struct BeachLook {
    RGB skyTop;
    RGB skyMid;
    RGB horizon;
    RGB sunColor;
    double sunElevation = 0;  ///< degrees above the horizon, as the sky shows the sun
    double sunAzimuth = 0;    ///< degrees, 0 straight out to sea, positive to the right
    double sunIntensity = 0;  ///< 1000 lights a white surface to 1.0
    RGB water;
    RGB sand;
    double clouds = 0;          ///< 0 clear to 1 overcast
    double exposure = 0;        ///< stops
    double shadowSoftness = 0;  ///< blur of the sun's shadow edges, shadow-map texels

    bool operator==(const BeachLook&) const = default;

    /// The look of beaches 1 to 7; every other number gets that of beach 8.
    static const BeachLook& forBeach(int number);
};

}  // namespace gull
