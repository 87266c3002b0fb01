#pragma once

#include "Engine/Raster/Image.h"
#include "Engine/Render/SkyDome.h"

#include <array>
#include <glm/vec3.hpp>
#include <glm/vec4.hpp>
#include <vector>

namespace gull {

/// The light of a sky picture, prepared for shading. Linear values.
struct FilteredSky {
    static constexpr int levels = 6;      ///< roughness 0, 0.2 .. 1
    static constexpr int baseSize = 128;  ///< side of a face of level 0; each level has half

    /// Coefficients such that a white Lambert surface with normal n has the radiance c0 + c1 y + c2 z + c3 x
    /// + c4 xy + c5 yz + c6 (3 zz - 1) + c7 xz + c8 (xx - yy).
    std::array<glm::vec3, 9> irradiance{};
    SkyDome dome;
    /// For each level six faces in OpenGL's order (+x, -x, +y, -y, +z, -z), row by row.
    std::array<std::vector<glm::vec4>, levels> faces;
};

/// `sky` is an opaque equirectangular panorama, sRGB: the middle column is azimuth 0 (-z), azimuth grows to
/// the right toward +x, and the top row is straight up. Takes a few hundredths of a second for a picture 512
/// pixels wide. Deterministic. Light from below the horizon is multiplied by up to `groundGain`; faces of
/// level 1 and above contain the whole sphere's mean with a share of `mirrorFill`.
FilteredSky filterSky(const Image& sky, const glm::vec3& groundGain, float mirrorFill);

}  // namespace gull
