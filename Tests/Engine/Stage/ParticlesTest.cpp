#include "Engine/Stage/Particles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>

namespace gull {
namespace {

ParticleSystem spray() {
    ParticleSystem system;
    system.start = 10;
    system.seed = 5;
    system.birthRate = 2200;
    system.emissionDuration = 0.07;
    system.lifeSpan = 0.75;
    system.lifeSpanVariation = 0.25;
    system.speed = 3.2;
    system.speedVariation = 1.6;
    system.spreadingAngle = 38;
    system.acceleration = {0, -9, 0};
    system.size = 0.07;
    system.sizeVariation = 0.04;
    system.colour = {0.8, 0.7, 0.5, 1};
    system.colourVariation = {0, 0, 0.1, 0};
    return system;
}

TEST(Particles, areAFunctionOfTimeAlone) {
    std::vector<Particle> direct, stepped;
    particlesAt(spray(), 10.3, direct);
    for (double time = 9; time < 10.3; time += 0.013) particlesAt(spray(), time, stepped);
    particlesAt(spray(), 10.3, stepped);
    ASSERT_EQ(direct.size(), stepped.size());
    for (std::size_t i = 0; i < direct.size(); ++i) {
        EXPECT_EQ(direct[i].position, stepped[i].position);
        EXPECT_EQ(direct[i].colour, stepped[i].colour);
    }
    ParticleSystem other = spray();
    other.seed = 6;
    particlesAt(other, 10.3, stepped);
    ASSERT_FALSE(stepped.empty());
    EXPECT_NE(direct[0].position, stepped[0].position);
}

TEST(Particles, areBornFlyAndDieAsDescribed) {
    const ParticleSystem system = spray();
    std::vector<Particle> particles;
    particlesAt(system, 9.99, particles);
    EXPECT_TRUE(particles.empty());
    particlesAt(system, 10.035, particles);
    EXPECT_NEAR(static_cast<double>(particles.size()), 77, 2) << "half of the emission";
    particlesAt(system, 10.07, particles);
    EXPECT_NEAR(static_cast<double>(particles.size()), 154, 2);

    const double greatestTilt = 38 * std::numbers::pi / 180;
    const double age = 0.3;
    particlesAt(system, 10 + age, particles);
    for (std::size_t i = 0; i < particles.size(); ++i) {
        const Particle& particle = particles[i];
        const double ownAge = age - static_cast<double>(i) / 2200;  // none has died yet
        const glm::dvec3 flight = particle.position - glm::dvec3(0, -4.5, 0) * ownAge * ownAge;
        const double speed = glm::length(flight) / ownAge;
        EXPECT_GE(speed, 1.6 - 1e-6);
        EXPECT_LE(speed, 4.8 + 1e-6);
        EXPECT_LE(std::acos(flight.y / glm::length(flight)), greatestTilt + 1e-6);
        EXPECT_GE(particle.size, 0.03 - 1e-9);
        EXPECT_LE(particle.size, 0.11 + 1e-9);
        EXPECT_NEAR(particle.colour.r, 0.8, 0.05 + 1e-9);
        EXPECT_NEAR(particle.colour.g / particle.colour.r, 0.7 / 0.8, 1e-9) << "brightness alone varies";
    }
    EXPECT_FALSE(isOver(system, 11.06));
    EXPECT_TRUE(isOver(system, 11.07));
    particlesAt(system, 11.071, particles);
    EXPECT_TRUE(particles.empty());
}

TEST(Particles, canBeBornOnASphere) {
    ParticleSystem system;
    system.birthRate = 90;
    system.emissionDuration = 2.6;
    system.lifeSpan = 100;
    system.emitterRadius = 0.7;
    std::vector<Particle> particles;
    particlesAt(system, 3, particles);
    ASSERT_EQ(particles.size(), 234u);
    glm::dvec3 sum(0);
    for (const Particle& particle : particles) {
        EXPECT_NEAR(glm::length(particle.position), 0.7, 1e-9);
        sum += particle.position;
    }
    EXPECT_LT(glm::length(sum) / 234, 0.15) << "on all sides";
}

TEST(Particles, neverLeaveTheirReach) {
    ParticleSystem wild = spray();
    wild.emitterRadius = 0.3;
    wild.spreadingAngle = 180;
    for (const ParticleSystem& system : {spray(), wild}) {
        double farthest = 0;
        std::vector<Particle> particles;
        for (double time = 10; time < 11.2; time += 0.02) {
            particlesAt(system, time, particles);
            for (const Particle& particle : particles)
                farthest = std::max(farthest, glm::length(particle.position) + particle.size / 2);
        }
        EXPECT_LT(farthest, reach(system));
        EXPECT_GT(farthest, reach(system) / 5) << "and it is not much farther than need be";
    }
}

}  // namespace
}  // namespace gull
