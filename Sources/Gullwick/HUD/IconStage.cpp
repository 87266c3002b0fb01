#include "Gullwick/HUD/IconStage.h"

#include "Gullwick/Scene/ItemModels.h"
#include "Gullwick/Scene/Look.h"

#include <algorithm>
#include <cmath>

namespace gull {

namespace {

/// Flat things are tipped toward the viewer, the others stand at three quarters. Radians.
glm::dvec3 pose(ItemKind kind) {
    switch (kind) {
        case ItemKind::coin:
        case ItemKind::cap:
            return {-0.75, -0.45, 0};
        case ItemKind::key:
            return {0.3, -0.3, 0.6};
        case ItemKind::chest:
            return {0.35, -0.6, 0};
        case ItemKind::can:
            return {0.2, -0.4, 0.5};
        default:
            return {0.35, -0.5, 0};
    }
}

BeachLook studioLook() {
    BeachLook look;
    look.skyTop = {0.2, 0.47, 0.9};
    look.skyMid = {0.55, 0.76, 0.97};
    look.horizon = {0.9, 0.94, 0.97};
    look.sunColor = {1.0, 0.98, 0.94};
    look.sunElevation = 52;
    look.sunAzimuth = 22;
    look.sunIntensity = 1800;
    look.water = {0.03, 0.48, 0.58};
    look.sand = {0.97, 0.89, 0.74};
    look.clouds = 0.22;
    look.exposure = 0;
    look.shadowSoftness = 3.0;
    return look;
}

constexpr int skyWidth = 512;  // pixels
constexpr double skyIntensity = 1.6;
constexpr double exposure = -0.75;             // stops; without tone mapping, white paper would be clipped
constexpr glm::dvec3 shade(1.78, 0.93, 0.82);  // the blue sky and the sea alone would make paper mint
constexpr double smallest = 0.2;               // world units; the frame never closes in further
constexpr double frameHalfHeight = 0.62;       // of the model's largest side

}  // namespace

std::unique_ptr<Stage> iconStage(ItemKind kind, Textures& textures) {
    auto stage = std::make_unique<Stage>();
    stage->environment = textures.sky(studioLook(), skyWidth, "icons");
    stage->environmentIntensity = skyIntensity;
    stage->shadeTint = shade;

    Node& model = stage->root.add(ItemModels::node(kind, textures));
    // Measured upright, so that the pose does not change the frame.
    const glm::dvec3 extent = model.bounds().size();
    const double side = std::max({extent.x, extent.y, extent.z, smallest});
    model.position = {0, 0, 0};
    model.eulerAngles = pose(kind);

    Node& lamp = stage->root.addChild("light");
    lamp.light = std::make_shared<Light>();
    lamp.light->colour = {1.0, 0.95, 0.86, 1};
    lamp.light->intensity = 1600;
    lamp.position = {2, 3, 4};
    lamp.lookAt({0, 0, 0});

    Node& eye = stage->root.addChild("camera");
    eye.camera = std::make_shared<Camera>();
    eye.camera->orthographicScale = side * frameHalfHeight;
    eye.camera->hdr = false;
    eye.camera->exposureOffset = exposure;
    eye.position = {0, 0, 6};
    stage->pointOfView = &eye;
    return stage;
}

}  // namespace gull
