#include "Gullwick/Scene/RipplePool.h"

#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/Terrain.h"

#include <cmath>
#include <numbers>

namespace gull {

namespace {

constexpr double quarter = std::numbers::pi / 2;
constexpr double duration = 0.6;

}  // namespace

RipplePool::RipplePool(Node& parent, Textures& textures) {
    const auto square = std::make_shared<const Geometry>(primitives::plane(1, 1));
    for (Ring& ring : rings_) {
        ring.material = Materials::additive(textures.ring());
        ring.node = &parent.add(makeNode(square, {ring.material}));
        ring.node->name = "ripple";
        ring.node->eulerAngles = {-quarter, 0, 0};
        ring.node->hidden = true;
        ring.node->renderingOrder = 6;
        ring.node->castsShadow = false;
        ring.node->layer = Layer::moving;
    }
}

void RipplePool::start(const glm::dvec3& ground, const Colour& tint, double strength, double time) {
    Ring& ring = rings_[next_];
    next_ = (next_ + 1) % rings_.size();
    const glm::dvec2 slope = Terrain::slope(ground.x, ground.z);
    ring.node->position = {ground.x, ground.y + 0.035, ground.z};
    // Sand that rises toward the viewer tilts things on it back about x; toward the right, up about z.
    ring.node->eulerAngles = {-std::atan(slope.y) - quarter, 0, std::atan(slope.x)};
    ring.node->hidden = false;
    ring.start = time;
    ring.strength = strength;
    ring.tint = tint;
}

void RipplePool::update(double time) {
    for (Ring& ring : rings_) {
        if (ring.node->hidden) continue;
        const double age = (time - ring.start) / duration;
        if (age >= 1) {
            ring.node->hidden = true;
            continue;
        }
        const double size = 1.1 + 2.2 * age * (0.6 + 0.4 * ring.strength);
        ring.node->scale = {size, size, 1};
        const double k = std::pow(1 - age, 1.6) * (0.25 + 0.6 * ring.strength);
        ring.material->multiply = {ring.tint.r * k, ring.tint.g * k, ring.tint.b * k, 1};
    }
}

void RipplePool::hideAll() {
    for (Ring& ring : rings_) ring.node->hidden = true;
}

}  // namespace gull
