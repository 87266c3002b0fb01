#include "Engine/Render/ParticlePass.h"

#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

#include <cmath>
#include <vector>

namespace gull {

namespace {

/// Appends the six corners of a particle's square.
void addSquare(std::vector<float>& vertices, const Particle& particle, const ParticleItem& item,
               const glm::dvec3& right, const glm::dvec3& up) {
    constexpr int corners[6][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 0}, {1, 1}, {0, 1}};
    const double scale = glm::length(glm::dvec3(item.model[0]));
    const glm::dvec3 middle(item.model * glm::dvec4(particle.position, 1));
    const double half = particle.size * scale / 2;
    const double c = std::cos(particle.angle) * half, s = std::sin(particle.angle) * half;
    const glm::dvec3 across = right * c + up * s, along = up * c - right * s;
    const glm::vec3 colour = linear(particle.colour) * static_cast<float>(item.system->intensity);
    for (const auto& corner : corners) {
        const glm::dvec3 p = middle + across * (2.0 * corner[0] - 1) + along * (2.0 * corner[1] - 1);
        for (const double v : {p.x, p.y, p.z}) vertices.push_back(static_cast<float>(v));
        vertices.push_back(static_cast<float>(corner[0]));
        vertices.push_back(static_cast<float>(corner[1]));
        for (int k = 0; k < 3; ++k) vertices.push_back(colour[k]);
        vertices.push_back(static_cast<float>(particle.colour.a) * item.opacity);
    }
}

}  // namespace

void drawParticles(RenderContext& context, const SurfacePass& pass, const ParticleItem& item, double time) {
    const ParticleSystem& system = *item.system;
    std::vector<Particle> particles;
    particlesAt(system, time, particles);
    if (particles.empty() || !system.image) return;
    const glm::dvec3 right = glm::normalize(glm::dvec3(pass.view.world[0]));
    const glm::dvec3 up = glm::normalize(glm::dvec3(pass.view.world[1]));
    std::vector<float> vertices;
    for (const Particle& particle : particles) addSquare(vertices, particle, item, right, up);

    ProgramKey key{ProgramKind::particles};
    key.features.set(Feature::additive, system.blend == Material::Blend::add);
    DrawState state;
    state.target = pass.target;
    state.program = &context.programs.get(key);
    state.frameUniforms = pass.frameUniforms;
    state.textures = {context.textures.binding(unitDiffuse, system.image, Wrap::clamp, Wrap::clamp)};
    state.depthTest = DepthTest::lessOrEqual;
    state.blending = Blending::over;
    const VertexRange all{0, context.streams.particles.upload(vertices)};
    state.vertexArray = context.streams.particles.vertexArray();
    context.device.draw(state, {&all, 1});
}

}  // namespace gull
