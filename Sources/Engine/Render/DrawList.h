#pragma once

#include "Engine/Render/MeshCache.h"
#include "Engine/Render/Viewpoint.h"
#include "Engine/Stage/Stage.h"

#include <algorithm>
#include <cstdint>
#include <glm/mat3x3.hpp>
#include <glm/mat4x4.hpp>
#include <glm/vec4.hpp>
#include <optional>
#include <vector>

namespace gull {

/// One element of one node's geometry, ready to draw.
struct DrawItem {
    const Mesh* mesh = nullptr;
    Mesh::Element element;
    const Material* material = nullptr;
    glm::dmat4 model{1};
    glm::mat3 normalMatrix{1};
    float opacity = 1;
    int order = 0;
    double distance = 0;  ///< from the eye to the middle of its bounds
    glm::dvec3 middle{0};
    double radius = 0;  ///< around the middle, world units
    bool castsShadow = true;
    bool blended = false;
    PixelArea area;  ///< pixels that it may touch
};

struct ParticleItem {
    const ParticleSystem* system = nullptr;
    glm::dmat4 model{1};
    float opacity = 1;
    int order = 0;
    double distance = 0;
};

/// An omni light; its colour is linear and includes the intensity.
struct Lamp {
    glm::dvec3 position{0};
    glm::vec3 colour{0};
    double start = 0;
    double end = 0;
    double exponent = 2;
};

struct Sun {
    const Light* light = nullptr;  ///< null: the stage has none
    glm::dvec3 toward{0, 1, 0};
    glm::vec3 colour{0};   ///< linear, includes the intensity
    glm::dmat4 matrix{1};  ///< world to the shadow map, 0 to 1 on all axes

    bool castsShadow() const { return light && light->castsShadow; }
    /// Its light on level ground.
    glm::vec3 onGround() const { return colour * std::max(static_cast<float>(toward.y), 0.0F); }
};

/// The contents of one of the three layers.
struct DrawLayer {
    std::vector<DrawItem> opaque;   ///< small things first, so that large ones behind them cost less
    std::vector<DrawItem> blended;  ///< in drawing order
    std::vector<ParticleItem> particles;
    std::vector<Lamp> lamps;
};

/// A stage flattened for one view: hidden nodes dropped, world transforms computed, layers separated. Borrows
/// from the stage and the mesh cache; valid until either changes.
struct DrawList {
    enum class Which { all, notStill };
    enum class Detail {
        fine,
        coarse,  ///< coarse geometries where they exist
    };

    DrawLayer still;
    DrawLayer water;
    DrawLayer moving;
    Sun sun;
    glm::vec3 ambient{0};

    /// The first directional light is the sun.
    static DrawList of(const Stage& stage, const Viewpoint& view, MeshCache& meshes, Which which = Which::all,
                       Detail detail = Detail::fine);
};

/// Changes when a shadow caster of `layer` appears, disappears or moves visibly.
std::uint64_t casterHash(const DrawLayer& layer);
/// Changes when anything in `layer` appears, disappears, moves or changes its look. Empty while particles
/// fly, because they change all the time.
std::optional<std::uint64_t> appearanceHash(const DrawLayer& layer);

/// sRGB to linear, continued above 1.
glm::vec3 linear(const Colour& colour);

}  // namespace gull
