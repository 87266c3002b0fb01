#pragma once

namespace gull {

/// The numbers that belong to the look of light rather than to any one scene.
struct RenderOptions {
    // Film: scene light to screen.
    float toneGain = 0.95f;        ///< scene light times this enters the film curve
    float huePreservation = 0.4f;  ///< 0: each channel by itself (bleaches, drifts), 1: hue kept exactly
    float whiteBalance = 0.55f;    ///< share of the cast of the light on level ground that the film takes out
    float exposureBalance = 0.3f;  ///< share, in stops, of that light's distance from 1 that it makes up for
    float brightestLight = 6;  ///< radiance above this is cut, so that one glint does not flicker or flood

    // The environment.
    float groundLift =
        4.5f;  ///< a sky's picture shows no sun on its ground: how much 1.0 of sun brightens it
    float mirrorFill = 0.4f;  ///< share of the whole sky's light in what mirrors with any roughness show
    float mirrorCast = 0.5f;  ///< share of its cast that the sky keeps in mirrors that are no water

    // The sun's shadow.
    float shadowNormalOffset = 1.4f;  ///< texels a receiver is lifted off itself
    float shadowDepthBias = 0.012f;   ///< world units
    float shadowWidening = 1.6f;      ///< world units from a thing to its shadow at which the edge is wide

    // Contact shadows.
    float contactShadowRadius = 0.55f;   ///< world units
    float contactShadowStrength = 2.4f;  ///< exponent on the open share of the sky
    float contactShadowOfSun = 0.5f;     ///< share of it that also dims the sun

    // The sea and other mirrors.
    float glintSpread = 1.0f;  ///< how much of a normal map's lost detail turns into roughness

    float waterDensity = 0.5f;  ///< halvings of what shines through, per world unit of water
};

}  // namespace gull
