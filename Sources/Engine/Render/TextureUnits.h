#pragma once

#include "Engine/Gl/ShaderStage.h"

namespace gull {

/// The texture unit of each sampler, the same in every program.
enum TextureUnit : int {
    unitDiffuse = 0,
    unitNormal,
    unitMultiply,
    unitEnvironment,
    unitSunShadow,
    unitContactShadows,
    unitMovingShadow,
    unitMovingCover,
    unitStaticLit,
    unitStaticShade,
    unitStaticSurface,
    unitStaticNormal,
    unitStaticDepth,
    unitSource,
    unitBloom,
    unitPaint,
    unitSkyMaps = unitMovingShadow,  // no program reads both
    unitWaterMirror = unitPaint,     // no surface reads the paint layer
};

inline constexpr SamplerUnit samplerUnits[] = {
    {"diffuseMap", unitDiffuse},
    {"normalMap", unitNormal},
    {"multiplyMap", unitMultiply},
    {"environment", unitEnvironment},
    {"sunShadow", unitSunShadow},
    {"contactShadowMap", unitContactShadows},
    {"movingShadow", unitMovingShadow},
    {"skyMaps", unitSkyMaps},
    {"movingCover", unitMovingCover},
    {"staticLit", unitStaticLit},
    {"staticShade", unitStaticShade},
    {"staticSurface", unitStaticSurface},
    {"staticNormal", unitStaticNormal},
    {"staticDepth", unitStaticDepth},
    {"source", unitSource},
    {"bloom", unitBloom},
    {"paintLayer", unitPaint},
    {"waterMirror", unitWaterMirror},
};

}  // namespace gull
