#pragma once

#include "Engine/Raster/Colour.h"

namespace gull {

/// A light attached to a node; directional lights shine along the node's local -z. At an intensity of 1000 a
/// white Lambert surface facing the light reaches 1.0 before exposure.
struct Light {
    enum class Kind { directional, ambient, omni };
    Kind kind = Kind::directional;
    Colour colour{1, 1, 1, 1};
    double intensity = 1000;

    // Shadows, directional lights only.
    bool castsShadow = false;
    int shadowMapSize = 2048;
    double shadowRadius = 3;  ///< softness: blur of the edge in shadow-map texels of a 4096 map
    double shadowAlpha = 0.55;
    double shadowOrthographicScale = 14;  ///< half the height of the light's view, world units
    double shadowNear = 1;
    double shadowFar = 140;
    double shadowBias = 0.6;  ///< how far a surface must lie behind another one to be shaded, 1/50 world unit

    // Omni lights: full strength up to the start distance, fading to zero at the end distance.
    double attenuationStart = 0;
    double attenuationEnd = 0;  ///< 0: no limit
    double attenuationExponent = 2;
    /// Omni lights: how many times as bright as `intensity` says they shine. A lamp's whole output and the
    /// sun's strength are not counted alike.
    double gain = 1;
};

}  // namespace gull
