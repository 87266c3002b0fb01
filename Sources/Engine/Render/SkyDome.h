#pragma once

#include <glm/vec3.hpp>
#include <vector>

namespace gull {

/// The sky above the horizon as a coarse panorama: rows of `width` pixels, the highest first, from the zenith
/// to the horizon; the middle column is azimuth 0 (-z), azimuth grows to the right toward +x. Linear values.
struct SkyDome {
    int width = 0;
    std::vector<glm::vec3> pixels;
};

/// A part of the hemisphere, seen in one direction.
struct SkyPart {
    glm::vec3 toward{0, 1, 0};  ///< unit
    float share =
        0;  ///< its solid angle over pi: parts of open sky light a surface with radiance * share * cosine
    glm::vec3 radiance{0};  ///< the dome's mean within it
};

/// Divides the hemisphere into `count` parts of about equal size, evenly spread; each pixel of the dome
/// belongs to the part whose direction is nearest. Their shares sum to 2. Without pixels they are black.
std::vector<SkyPart> divided(const SkyDome& dome, int count);

}  // namespace gull
