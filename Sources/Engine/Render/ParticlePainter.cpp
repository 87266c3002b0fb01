#include "Engine/Render/ParticlePainter.h"

#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <cmath>

namespace gull {

namespace {
constexpr int floatsPerVertex = 9;  // position, texture coordinates, colour
}

ParticlePainter::ParticlePainter(VertexStages& stages, TextureCache& textures)
    : stages_(stages), textures_(textures), array_(GlVertexArray::make()), buffer_(GlBuffer::make()) {
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    auto attribute = [](GLuint place, GLint components, std::size_t first) {
        glEnableVertexAttribArray(place);
        glVertexAttribPointer(place, components, GL_FLOAT, GL_FALSE, floatsPerVertex * sizeof(float),
                              reinterpret_cast<const void*>(first * sizeof(float)));
    };
    attribute(0, 3, 0);
    attribute(2, 2, 3);
    attribute(4, 4, 5);
    glBindVertexArray(0);
}

void ParticlePainter::draw(const ParticleItem& item, const Viewpoint& view, double time, bool display) {
    const ParticleSystem& system = *item.system;
    particlesAt(system, time, particles_);
    if (particles_.empty() || !system.image) return;

    glm::dvec3 right = glm::normalize(glm::dvec3(view.world[0])),
               up = glm::normalize(glm::dvec3(view.world[1]));
    double scale = glm::length(glm::dvec3(item.model[0]));
    constexpr int corners[6][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 0}, {1, 1}, {0, 1}};
    vertices_.clear();
    for (const Particle& particle : particles_) {
        glm::dvec3 middle(item.model * glm::dvec4(particle.position, 1));
        double half = particle.size * scale / 2;
        double c = std::cos(particle.angle) * half, s = std::sin(particle.angle) * half;
        glm::dvec3 across = right * c + up * s, along = up * c - right * s;
        glm::vec3 colour = linear(particle.colour) * static_cast<float>(system.intensity);
        for (const auto& corner : corners) {
            glm::dvec3 p = middle + across * (2.0 * corner[0] - 1) + along * (2.0 * corner[1] - 1);
            for (double v : {p.x, p.y, p.z}) vertices_.push_back(static_cast<float>(v));
            vertices_.push_back(static_cast<float>(corner[0]));
            vertices_.push_back(static_cast<float>(corner[1]));
            for (int k = 0; k < 3; ++k) vertices_.push_back(colour[k]);
            vertices_.push_back(static_cast<float>(particle.colour.a) * item.opacity);
        }
    }

    bool added = system.blend == Material::Blend::add;
    program(added, display).use();
    textures_.bind(unitDiffuse, system.image, Wrap::clamp, Wrap::clamp);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, added ? GL_ONE : GL_ONE_MINUS_SRC_ALPHA);
    glDisable(GL_CULL_FACE);
    glDepthMask(GL_FALSE);
    glBindVertexArray(array_.name());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.name());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices_.size() * sizeof(float)), vertices_.data(),
                 GL_STREAM_DRAW);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(particles_.size() * 6));
}

const Program& ParticlePainter::program(bool added, bool display) {
    int key = (added ? 1 : 0) + (display ? 2 : 0);
    if (auto found = programs_.find(key); found != programs_.end()) return found->second;
    std::vector<std::string> defines;
    if (added) defines.emplace_back("ADDED");
    if (display) defines.emplace_back("OUT_DISPLAY");
    return programs_
        .emplace(key, Program(stages_, "particles", {shaders::particleVertex},
                              {shaders::particleFragment, defines}))
        .first->second;
}

}  // namespace gull
