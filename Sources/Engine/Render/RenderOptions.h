#pragma once

#include <glm/vec3.hpp>

namespace gull {

/// The numbers that belong to the look of light rather than to one scene.
struct RenderOptions {
    // Tone mapping: scene light to display.
    float toneGain = 0.95f;        ///< scene light is multiplied by this before the tone curve
    float huePreservation = 0.4f;  ///< 0: each channel by itself (bleaches, shifts hues), 1: hue kept exactly
    float whiteBalance = 0.55f;    ///< share of the colour cast of the light on level ground that is removed
    float exposureBalance = 0.3f;  ///< share, in stops, of that light's distance from 1 that is compensated
    float brightestLight = 6;      ///< radiance above this is clipped, so that no glint flickers or floods

    // The environment.
    float groundLift = 4.5f;  ///< a sky's picture has no sun on its ground: how much 1.0 of sun brightens it
    float mirrorFill = 0.4f;  ///< share of the whole sky's mean light in reflections of any roughness
    float mirrorCast = 0.5f;  ///< share of the sky's colour cast kept in reflections other than water's

    // The sun's shadow.
    float shadowNormalOffset = 1.4f;  ///< texels a receiver is lifted off itself
    float shadowDepthBias = 0.02f;    ///< world units for each unit of a light's bias
    float shadowWidening = 1.6f;      ///< world units between caster and shadow at which the edge is wide

    // Contact shadows.
    float contactShadowRadius = 0.55f;   ///< world units
    float contactShadowStrength = 2.4f;  ///< exponent on the open share of the sky
    float contactShadowOfSun = 0.25f;    ///< share of the contact shadow that also dims the sun
    float contactShadowOfSky = 0.1f;     ///< exponent on the contact shadow that also dims the sky

    /// Of the ground, as far as it lights what stands on it: sand. It lies at height 0.
    glm::vec3 groundAlbedo{0.74F, 0.56F, 0.31F};

    // The sea and other mirrors.
    float glintSpread = 1.0f;  ///< how much of a normal map's lost detail turns into roughness

    float waterDensity = 0.5f;  ///< halvings of the light shining through, per world unit of water
};

}  // namespace gull
