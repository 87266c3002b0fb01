#pragma once

#include <utility>
#include <vector>

namespace gull {

/// Which texture unit serves which sampler, the same in every program.
enum TextureUnit : int {
    unitDiffuse = 0,
    unitNormal,
    unitMultiply,
    unitEnvironment,
    unitSunShadow,
    unitOcclusion,
    unitMovingShadow,
    unitMovingCover,
    unitKeptLit,
    unitKeptShade,
    unitKeptSurface,
    unitKeptNormal,
    unitKeptDepth,
    unitSource,
    unitBloom,
    unitKeptPaint,
    unitUpload,  ///< for making and filling textures; no program reads it
};

inline const std::vector<std::pair<const char*, int>>& textureUnitNames() {
    static const std::vector<std::pair<const char*, int>> names = {
        {"diffuseMap", unitDiffuse},        {"normalMap", unitNormal},        {"multiplyMap", unitMultiply},
        {"environment", unitEnvironment},   {"sunShadow", unitSunShadow},     {"occlusionMap", unitOcclusion},
        {"movingShadow", unitMovingShadow}, {"movingCover", unitMovingCover}, {"keptLit", unitKeptLit},
        {"keptShade", unitKeptShade},       {"keptSurface", unitKeptSurface}, {"keptNormal", unitKeptNormal},
        {"keptDepth", unitKeptDepth},       {"source", unitSource},           {"bloom", unitBloom},
        {"keptPaint", unitKeptPaint},
    };
    return names;
}

}  // namespace gull
