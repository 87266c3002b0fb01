#include "Engine/Render/FrameUniforms.h"

#include <algorithm>
#include <cmath>
#include <glm/exponential.hpp>
#include <glm/geometric.hpp>

namespace gull {

namespace {

constexpr glm::vec3 luminance(0.2126F, 0.7152F, 0.0722F);

/// The radiance of a white Lambert surface that faces up.
glm::vec3 lightOnLevelGround(const FrameBlock& block) {
    const glm::vec4* sky = block.irradiance;
    return glm::max(glm::vec3(sky[0] + sky[1] - sky[6] - sky[8] + block.ambient), 0.0F) +
           glm::vec3(block.sunColour) * std::max(block.sunDirection.y, 0.0F);
}

/// Channel gains that remove a share of `light`'s colour cast and of its distance from 1.
glm::vec3 balance(const glm::vec3& light, const RenderOptions& options) {
    if (!(light.r > 0 && light.g > 0 && light.b > 0)) return glm::vec3(1);
    float bright = std::max(glm::dot(light, luminance), 0.05F);
    glm::vec3 gain = glm::pow(bright / light, glm::vec3(options.whiteBalance));
    return gain * (bright / glm::dot(light * gain, luminance) * std::pow(bright, -options.exposureBalance));
}

}  // namespace

FrameBlock frameBlock(const Stage& stage, const Viewpoint& view, const DrawList& list,
                      const std::array<glm::vec3, 9>& irradiance, const RenderOptions& options) {
    FrameBlock block;
    const Camera& camera = view.camera;
    block.viewProjection = glm::mat4(view.viewProjection);
    block.inverseViewProjection = glm::mat4(glm::inverse(view.viewProjection));
    block.eye = glm::vec4(glm::vec3(view.eye), std::exp2(camera.exposureOffset));
    auto width = static_cast<float>(view.size.width), height = static_cast<float>(view.size.height);
    block.picture = {width, height, 1 / width, 1 / height};

    const glm::dmat4& p = view.projection;
    block.lens = {1 / p[0][0], 1 / p[1][1], p[2][2], p[3][2]};

    const glm::vec3 tint(stage.shadeTint);
    float gap = 0;
    if (const Light* light = list.sun.light) {
        // A texel of the map in world units; the light's radius counts texels of a 4096 map.
        double texel = 2 * light->shadowOrthographicScale / std::max(light->shadowMapSize, 1);
        bool shadow = light->castsShadow;
        block.sunMatrix = glm::mat4(list.sun.matrix);
        block.sunDirection = glm::vec4(glm::vec3(list.sun.toward), shadow ? light->shadowAlpha : 0);
        block.sunColour = glm::vec4(list.sun.colour, std::max(light->shadowRadius, 0.5) / 4096);
        block.sunShape = {
            options.shadowNormalOffset * static_cast<float>(texel * (1 + light->shadowRadius / 3)),
            options.shadowDepthBias *
                static_cast<float>(light->shadowBias / (light->shadowFar - light->shadowNear)),
            block.sunShape.z, 0};
        gap = options.shadowWidening / static_cast<float>(light->shadowFar - light->shadowNear);
    }
    block.ambient = glm::vec4(list.ambient * tint, 0);
    float sky = stage.environment ? static_cast<float>(stage.environmentIntensity) : 0;
    for (int i = 0; i < 9; ++i)
        block.irradiance[i] = glm::vec4(irradiance[static_cast<std::size_t>(i)] * tint * sky, 0);
    glm::vec3 onGround = lightOnLevelGround(block);
    glm::vec3 gain = camera.hdr ? balance(onGround, options) * options.toneGain : glm::vec3(1);
    block.toneGain = glm::vec4(gain, options.huePreservation);
    block.fogColour = glm::vec4(linear(stage.fog.colour), stage.fog.densityExponent);
    double fogLength = stage.fog.end - stage.fog.start;
    block.fogRange = {stage.fog.start, stage.fog.end > 0 && fogLength > 0 ? 1 / fogLength : 0, sky, 0};
    block.grade = {camera.hdr ? 1 : 0, camera.contrast, camera.saturation, camera.bloomIntensity};
    block.vignette = {camera.vignettingIntensity, camera.vignettingPower, gap, options.mirrorCast};
    return block;
}

void setLamps(FrameBlock& block, std::vector<Lamp> lamps) {
    auto strength = [](const Lamp& lamp) { return lamp.colour.r + lamp.colour.g + lamp.colour.b; };
    std::stable_sort(lamps.begin(), lamps.end(),
                     [&](const Lamp& a, const Lamp& b) { return strength(a) > strength(b); });
    auto count = std::min(lamps.size(), static_cast<std::size_t>(FrameBlock::mostLamps));
    for (std::size_t i = 0; i < count; ++i) {
        const Lamp& lamp = lamps[i];
        double inverse = lamp.end > lamp.start ? 1 / (lamp.end - lamp.start) : 0;
        block.lampPlace[i] = {glm::vec3(lamp.position), inverse};
        block.lampLight[i] = {lamp.colour, inverse > 0 ? lamp.end * inverse : 1};
        block.lampExponents[static_cast<int>(i)] = static_cast<float>(lamp.exponent);
    }
    for (std::size_t i = count; i < FrameBlock::mostLamps; ++i)
        block.lampPlace[i] = block.lampLight[i] = glm::vec4(0);
}

}  // namespace gull
