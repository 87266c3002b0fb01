#include "Gullwick/Scene/SceneLights.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <glm/trigonometric.hpp>
#include <string>

namespace gull {

namespace {

constexpr double sunDistance = 60;
constexpr int backgroundWidth = 2048;
constexpr int environmentWidth = 512;

/// The light in the shade. The blue of a clear sky alone would look green on warm sand; that of dusk is
/// violet.
constexpr glm::dvec3 clearShade(1.1, 0.9, 1.08);
constexpr glm::dvec3 duskShade(1.1, 0.82, 1.35);
constexpr glm::dvec3 overcastShade(1.02, 0.98, 1.02);
constexpr double duskElevation = 12;  // degrees, of the sun
constexpr double overcast = 0.9;      // share of clouds

}  // namespace

SceneLights::SceneLights(Stage& stage)
    : stage_(stage),
      sun_(stage.root.addChild("sun")),
      sunLight_(std::make_shared<Light>()),
      ambient_(std::make_shared<Light>()) {
    sunLight_->kind = Light::Kind::directional;
    sunLight_->castsShadow = true;
    sunLight_->shadowMapSize = 4096;
    sunLight_->shadowAlpha = 0.55;
    sunLight_->shadowOrthographicScale = 14;
    sunLight_->shadowNear = 1;
    sunLight_->shadowFar = 140;
    sunLight_->shadowBias = 0.6;
    sun_.light = sunLight_;

    ambient_->kind = Light::Kind::ambient;
    stage.root.addChild("ambient").light = ambient_;
}

glm::dvec3 SceneLights::sunDirection(const BeachLook& look) {
    const double elevation = glm::radians(look.sunElevation), azimuth = glm::radians(look.sunAzimuth);
    return glm::normalize(glm::dvec3(std::cos(elevation) * std::sin(azimuth),
                                     std::max(std::sin(elevation), 0.45),
                                     -std::cos(azimuth) * std::cos(elevation)));
}

void SceneLights::apply(const BeachLook& look, int beach, Textures& textures) {
    const std::string key = std::to_string(beach);
    stage_.background = textures.sky(look, backgroundWidth, key);
    stage_.environment = textures.sky(look, environmentWidth, key);
    stage_.environmentIntensity = 0.85;
    stage_.shadeTint = look.clouds > overcast              ? overcastShade
                       : look.sunElevation < duskElevation ? duskShade
                                                           : clearShade;
    stage_.fog = {look.horizon.mixed(look.skyMid, 0.25).colour(), 26, 120, 1.4};

    sun_.position = sunDirection(look) * sunDistance;
    sun_.lookAt({0, 0, 0});
    sunLight_->colour = look.sunColor.mixed({1, 0.97, 0.92}, 0.4).colour();
    sunLight_->intensity = look.sunIntensity * 0.62;
    sunLight_->shadowRadius = look.shadowSoftness;
    ambient_->colour = look.skyTop.mixed(look.skyMid, 0.5).colour();
    ambient_->intensity = look.sunElevation < duskElevation ? 170 : 110;
}

}  // namespace gull
