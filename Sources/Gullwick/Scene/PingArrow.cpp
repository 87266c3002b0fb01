#include "Gullwick/Scene/PingArrow.h"

#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Materials.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace gull {

namespace {

constexpr double duration = 2.4;

}  // namespace

PingArrow::PingArrow(Node& parent, Textures& textures)
    : pivot_(parent.addChild("ping")),
      arrow_(pivot_.addChild("arrow")),
      material_(Materials::additive(textures.arrow())) {
    material_->doubleSided = true;
    pivot_.hidden = true;
    pivot_.renderingOrder = 7;
    pivot_.layer = Layer::moving;
    arrow_.geometry = std::make_shared<const Geometry>(primitives::plane(0.9, 2.7));
    arrow_.materials = {material_};
    arrow_.eulerAngles = {-std::numbers::pi / 2, 0, 0};
    arrow_.position = {0, 0, -2.1};
    arrow_.renderingOrder = 7;
    arrow_.castsShadow = false;
}

void PingArrow::show(const glm::dvec3& from, const glm::dvec3& to, double time) {
    pivot_.position = {from.x, from.y + 0.06, from.z};
    pivot_.eulerAngles.y = std::atan2(-(to.x - from.x), -(to.z - from.z));
    pivot_.hidden = false;
    start_ = time;
}

void PingArrow::update(double time) {
    const double e = time - start_;
    pivot_.hidden = e >= duration;
    if (pivot_.hidden) return;
    const double fadeIn = std::min(e / 0.2, 1.0);
    const double fadeOut = std::max(0.0, 1 - std::max(e - 1.6, 0.0) / 0.8);
    const double b = (0.7 + 0.3 * std::sin(12 * e)) * fadeIn * fadeOut;
    material_->multiply = {0.55 * b, b, 0.95 * b, 1};
    arrow_.position.z = -2.1 - 0.4 * std::abs(std::sin(5 * e));  // bobs the way it points
}

void PingArrow::hide() {
    start_ = -100;
    pivot_.hidden = true;
}

}  // namespace gull
