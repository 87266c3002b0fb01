#pragma once

#include "Engine/Raster/Colour.h"
#include "Engine/Stage/Material.h"

#include <cstdint>
#include <glm/vec3.hpp>
#include <memory>
#include <vector>

namespace gull {

/// A burst of small camera-facing pictures. What it shows is a function of its description, its seed and the
/// time since it began, nothing else: a picture taken at any moment shows the same particles however it got
/// there.
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
    Colour colourVariation{0, 0, 0, 0};  ///< hue, saturation, brightness, alpha, each +- half of it
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
/// How far from its node's origin a particle's edge gets at most, in the space of that node.
double reach(const ParticleSystem& system);
/// True when no particle is or will be alive at `time`.
bool isOver(const ParticleSystem& system, double time);

}  // namespace gull
