#pragma once

#include "Engine/Raster/Colour.h"
#include "Engine/Stage/Material.h"

#include <cstdint>
#include <glm/vec3.hpp>
#include <memory>
#include <vector>

namespace gull {

/// A burst of small camera-facing pictures. The particles are a pure function of the description, the seed
/// and the time since the start, so a picture of any moment shows the same particles whichever frames came
/// before.
struct ParticleSystem {
    std::shared_ptr<Texture> image;
    double start = 0;  ///< scene time of the first birth
    std::uint64_t seed = 1;

    double birthRate = 0;         ///< a second
    double emissionDuration = 0;  ///< seconds
    double lifeSpan = 1, lifeSpanVariation = 0;
    double speed = 0, speedVariation = 0;
    glm::dvec3 direction{0, 1, 0};
    double spreadingAngle = 0;  ///< degrees off `direction`, 180: everywhere
    glm::dvec3 acceleration{0, 0, 0};
    double emitterRadius = 0;  ///< above 0: born on a sphere's surface
    double size = 0.1, sizeVariation = 0;
    double angularVelocity = 0;  ///< degrees a second
    Colour colour{1, 1, 1, 1};
    Colour colourVariation{0, 0, 0,
                           0};  ///< hue, saturation, brightness, alpha, each by up to half of this either way
    double intensity = 1;
    Material::Blend blend = Material::Blend::alpha;
};

struct Particle {
    glm::dvec3 position;  ///< in the space of the node that carries the system
    double size = 0;
    double angle = 0;  ///< radians
    Colour colour;
};

/// Writes what `system` shows at scene time `time` into `particles` (cleared first), oldest first.
void particlesAt(const ParticleSystem& system, double time, std::vector<Particle>& particles);
/// The greatest distance of a particle's edge from its node's origin, in the space of that node.
double reach(const ParticleSystem& system);
/// True when no particle is or will be alive at `time`.
bool isOver(const ParticleSystem& system, double time);

}  // namespace gull
