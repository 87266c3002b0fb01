#include "Engine/Stage/Particles.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>

namespace gull {

namespace {

constexpr double pi = std::numbers::pi;

/// Random numbers of one particle, independent of all others.
class Draws {
  public:
    Draws(std::uint64_t seed, std::uint64_t index) : state_(seed * 0x9e3779b97f4a7c15u ^ (index << 20)) {}

    /// Uniform from 0 (inclusive) to 1 (exclusive).
    double unit() {
        state_ += 0x9e3779b97f4a7c15u;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        z ^= z >> 31;
        return static_cast<double>(z >> 11) * 0x1p-53;
    }
    double around(double value, double variation) { return value + (unit() * 2 - 1) * variation; }

  private:
    std::uint64_t state_;
};

/// A direction within `spread` radians of `axis`, evenly over that cap of the sphere.
glm::dvec3 directionAround(const glm::dvec3& axis, double spread, Draws& draws) {
    const double cosine = 1 - draws.unit() * (1 - std::cos(spread));
    const double sine = std::sqrt(std::max(0.0, 1 - cosine * cosine));
    const double turn = draws.unit() * 2 * pi;
    const glm::dvec3 up = glm::normalize(axis);
    const glm::dvec3 side =
        glm::normalize(glm::cross(up, std::abs(up.y) < 0.9 ? glm::dvec3(0, 1, 0) : glm::dvec3(1, 0, 0)));
    const glm::dvec3 across = glm::cross(up, side);
    return up * cosine + (side * std::cos(turn) + across * std::sin(turn)) * sine;
}

/// Hue, saturation and brightness moved by the given amounts.
Colour varied(const Colour& colour, double hueBy, double saturationBy, double brightnessBy, double alphaBy) {
    const double high = std::max({colour.r, colour.g, colour.b});
    const double low = std::min({colour.r, colour.g, colour.b});
    const double range = high - low;
    double hue = 0;  // in sixths of the circle
    if (range > 0) {
        if (high == colour.r)
            hue = (colour.g - colour.b) / range;
        else if (high == colour.g)
            hue = 2 + (colour.b - colour.r) / range;
        else
            hue = 4 + (colour.r - colour.g) / range;
    }
    hue += hueBy * 6;
    const double saturation = std::clamp((high > 0 ? range / high : 0) + saturationBy, 0.0, 1.0);
    const double brightness = std::clamp(high + brightnessBy, 0.0, 1.0);
    const auto component = [&](double offset) {
        double k = std::fmod(offset + hue, 6);
        if (k < 0) k += 6;
        return brightness * (1 - saturation * std::clamp(std::min(k, 4 - k), 0.0, 1.0));
    };
    return {component(5), component(3), component(1), std::clamp(colour.a + alphaBy, 0.0, 1.0)};
}

}  // namespace

void particlesAt(const ParticleSystem& system, double time, std::vector<Particle>& particles) {
    particles.clear();
    if (system.birthRate <= 0) return;
    const double elapsed = time - system.start;
    const double emitted = std::min(elapsed, system.emissionDuration);
    if (emitted < 0) return;
    const auto count =
        static_cast<std::uint64_t>(std::max(0.0, std::ceil(system.emissionDuration * system.birthRate)));
    const double longest = system.lifeSpan + system.lifeSpanVariation;
    const double firstAlive = std::max(0.0, std::floor((elapsed - longest) * system.birthRate));

    for (auto i = static_cast<std::uint64_t>(firstAlive); i < count; ++i) {
        const double age = elapsed - static_cast<double>(i) / system.birthRate;
        if (age < 0) break;
        Draws draws(system.seed, i);
        const double life = std::max(1e-3, draws.around(system.lifeSpan, system.lifeSpanVariation));
        const double speed = draws.around(system.speed, system.speedVariation);
        const double size = std::max(0.0, draws.around(system.size, system.sizeVariation));
        const glm::dvec3 direction =
            directionAround(system.direction, system.spreadingAngle * pi / 180, draws);
        glm::dvec3 birthPlace(0);
        if (system.emitterRadius > 0) {
            birthPlace = directionAround({0, 1, 0}, pi, draws) * system.emitterRadius;
        }
        const double turn = draws.unit() * 2 * pi;
        const Colour& variation = system.colourVariation;
        const double hue = draws.around(0, variation.r / 2), saturation = draws.around(0, variation.g / 2);
        const double brightness = draws.around(0, variation.b / 2), alpha = draws.around(0, variation.a / 2);
        if (age >= life) continue;

        Particle particle;
        particle.position = birthPlace + direction * (speed * age) + system.acceleration * (0.5 * age * age);
        particle.size = size;
        particle.angle = turn + system.angularVelocity * pi / 180 * age;
        particle.colour = varied(system.colour, hue, saturation, brightness, alpha);
        // Fades over the last third of its life instead of vanishing at once.
        particle.colour.a *= std::min(1.0, (1 - age / life) * 3);
        particles.push_back(particle);
    }
}

double reach(const ParticleSystem& system) {
    const double life = system.lifeSpan + system.lifeSpanVariation;
    return system.emitterRadius + (system.speed + system.speedVariation) * life +
           glm::length(system.acceleration) / 2 * life * life + system.size + system.sizeVariation;
}

bool isOver(const ParticleSystem& system, double time) {
    return time >= system.start + system.emissionDuration + system.lifeSpan + system.lifeSpanVariation;
}

}  // namespace gull
