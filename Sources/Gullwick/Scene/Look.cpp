#include "Gullwick/Scene/Look.h"

#include <array>

namespace gull {

namespace {

// clang-format off
constexpr std::array<BeachLook, 8> looks{{
    // 1: late morning
    {.skyTop = {0.3, 0.52, 0.86}, .skyMid = {0.6, 0.77, 0.95}, .horizon = {0.96, 0.92, 0.86},
     .sunColor = {1, 0.95, 0.86}, .sunElevation = 34, .sunAzimuth = -38, .sunIntensity = 1650,
     .water = {0.07, 0.43, 0.5}, .sand = {0.95, 0.85, 0.68},
     .clouds = 0.3, .exposure = 0, .shadowSoftness = 3},
    // 2: noon
    {.skyTop = {0.2, 0.47, 0.9}, .skyMid = {0.55, 0.76, 0.97}, .horizon = {0.9, 0.94, 0.97},
     .sunColor = {1, 0.98, 0.94}, .sunElevation = 52, .sunAzimuth = 22, .sunIntensity = 1800,
     .water = {0.03, 0.48, 0.58}, .sand = {0.97, 0.89, 0.74},
     .clouds = 0.22, .exposure = 0, .shadowSoftness = 3},
    // 3: afternoon
    {.skyTop = {0.27, 0.44, 0.76}, .skyMid = {0.62, 0.71, 0.86}, .horizon = {0.98, 0.88, 0.76},
     .sunColor = {1, 0.9, 0.75}, .sunElevation = 26, .sunAzimuth = 42, .sunIntensity = 1550,
     .water = {0.06, 0.38, 0.46}, .sand = {0.92, 0.81, 0.63},
     .clouds = 0.45, .exposure = 0, .shadowSoftness = 3},
    // 4: golden hour
    {.skyTop = {0.24, 0.31, 0.55}, .skyMid = {0.78, 0.62, 0.6}, .horizon = {1, 0.76, 0.52},
     .sunColor = {1, 0.78, 0.5}, .sunElevation = 14, .sunAzimuth = -30, .sunIntensity = 1450,
     .water = {0.06, 0.3, 0.38}, .sand = {0.93, 0.77, 0.57},
     .clouds = 0.5, .exposure = 0, .shadowSoftness = 3},
    // 5: sunset
    {.skyTop = {0.18, 0.19, 0.44}, .skyMid = {0.86, 0.5, 0.5}, .horizon = {1, 0.62, 0.38},
     .sunColor = {1, 0.63, 0.36}, .sunElevation = 7, .sunAzimuth = 24, .sunIntensity = 1250,
     .water = {0.08, 0.22, 0.32}, .sand = {0.9, 0.69, 0.53},
     .clouds = 0.6, .exposure = 0, .shadowSoftness = 3},
    // 6: dusk
    {.skyTop = {0.07, 0.09, 0.24}, .skyMid = {0.33, 0.29, 0.5}, .horizon = {0.88, 0.56, 0.5},
     .sunColor = {1, 0.58, 0.45}, .sunElevation = 4, .sunAzimuth = -14, .sunIntensity = 750,
     .water = {0.05, 0.15, 0.26}, .sand = {0.8, 0.7, 0.64},
     .clouds = 0.4, .exposure = 0.5, .shadowSoftness = 3},
    // 7: overcast
    {.skyTop = {0.3, 0.34, 0.4}, .skyMid = {0.5, 0.54, 0.58}, .horizon = {0.74, 0.76, 0.77},
     .sunColor = {0.86, 0.89, 0.93}, .sunElevation = 42, .sunAzimuth = 0, .sunIntensity = 700,
     .water = {0.11, 0.24, 0.27}, .sand = {0.75, 0.7, 0.62},
     .clouds = 1, .exposure = 0.15, .shadowSoftness = 12},
    // 8: last glow
    {.skyTop = {0.17, 0.11, 0.38}, .skyMid = {0.9, 0.38, 0.42}, .horizon = {1, 0.56, 0.26},
     .sunColor = {1, 0.56, 0.27}, .sunElevation = 9, .sunAzimuth = -40, .sunIntensity = 1350,
     .water = {0, 0.34, 0.42}, .sand = {0.96, 0.83, 0.63},
     .clouds = 0.5, .exposure = 0, .shadowSoftness = 3},
}};
// clang-format on

}  // namespace

const BeachLook& BeachLook::forBeach(int number) {
    const bool own = number >= 1 && number <= 7;
    return looks[own ? static_cast<std::size_t>(number - 1) : looks.size() - 1];
}

}  // namespace gull
