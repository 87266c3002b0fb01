#include "Gullwick/Scene/DetectorRig.h"

#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Lathe.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <glm/trigonometric.hpp>
#include <numbers>

namespace gull {

namespace {

using MaterialRef = std::shared_ptr<Material>;

constexpr double quarter = std::numbers::pi / 2;
constexpr double hover = 0.32;        // of the coil above the sand
constexpr double glowHeight = 0.03;   // of the glow above the sand
constexpr double leanPerSecond = 10;  // how fast the lean follows
constexpr double leanReach = 0.25;    // radians at full lean
constexpr double shaftTilt = 22;      // degrees above the horizontal
constexpr double shaftFoot = 0.135;   // above the coil
constexpr glm::dvec2 hand(6, 15);     // x and z toward which the shaft points

MaterialRef dark() {
    return Materials::pbr(RGB{0.07, 0.075, 0.08}, 0.1, 0.45);
}
MaterialRef orange() {
    return Materials::pbr(RGB{0.95, 0.42, 0.18}, 0.2, 0.4);
}
MaterialRef steel() {
    return Materials::pbr(RGB{0.32, 0.34, 0.37}, 0.8, 0.35);
}

/// Segment counts of round parts, kept low because the rig and its shadow are redrawn every frame.
class Fineness {
  public:
    static constexpr double fine = 1, coarse = 2.0 / 3;

    explicit constexpr Fineness(double share) : share_(share) {}
    int operator()(int pieces) const { return static_cast<int>(std::lround(share_ * pieces)); }

  private:
    double share_;
};
using Shape = std::function<Geometry(Fineness)>;

Node& part(Node& parent, const Shape& shape, const MaterialRef& material, const glm::dvec3& at = {0, 0, 0},
           const glm::dvec3& angles = {0, 0, 0}) {
    Node& node = parent.add(makeNode(shape(Fineness(Fineness::fine)), material));
    node.coarseGeometry = std::make_shared<const Geometry>(shape(Fineness(Fineness::coarse)));
    node.position = at;
    node.eulerAngles = angles;
    return node;
}

/// Joins parts of one material into one mesh: the rig is drawn twice per frame, and every mesh has a cost.
class Assembly {
  public:
    /// `angles`: of the axes along which the mesh's bounds are taken.
    explicit Assembly(const glm::dvec3& angles = {0, 0, 0}) { frame_.eulerAngles = angles; }
    void add(const Geometry& geometry, const glm::dvec3& at = {0, 0, 0}, const glm::dvec3& angles = {0, 0, 0},
             const glm::dvec3& scale = {1, 1, 1}) {
        Node place;
        place.position = at;
        place.eulerAngles = angles;
        place.scale = scale;
        mesh_.append(geometry, glm::inverse(frame_.localTransform()) * place.localTransform());
    }
    Geometry take() { return mesh_.take(); }

  private:
    Node frame_;
    MeshBuilder mesh_;
};

}  // namespace

DetectorRig::DetectorRig(Node& parent, Textures& textures)
    : root_(parent.addChild("detector")),
      tilt_(root_.addChild("tilt")),
      yaw_(root_.addChild("yaw")),
      glow_(root_.addChild("glow")) {
    root_.layer = Layer::moving;
    buildCoil(textures);
    buildShaft();
    setSignal(0, {1, 1, 1, 1});
}

void DetectorRig::buildCoil(Textures& textures) {
    const auto frame = [](Fineness in) {
        Assembly assembly;
        assembly.add(primitives::torus(0.64, 0.075, in(48), in(10)), {0, 0, 0}, {0, 0, 0}, {1, 0.7, 1});
        for (const double degrees : {0.0, 60.0, 120.0})
            assembly.add(primitives::box(1.2, 0.035, 0.06, 0.01), {}, {0, glm::radians(degrees), 0});
        return assembly.take();
    };
    part(tilt_, frame, dark());

    auto disc = Materials::pbr(Colour{0.05, 0.05, 0.06, 0.62}, 0, 0.5);
    disc->blend = Material::Blend::alpha;
    disc->opacity = 0.7;
    part(
        tilt_, [](Fineness in) { return primitives::cylinder(0.6, 0.02, in(48)); }, disc);
    part(tilt_, [](Fineness in) { return primitives::cylinder(0.13, 0.08, in(32)); }, orange(), {0, 0.03, 0});

    led_ = Materials::pbr(RGB{0.1, 0.1, 0.1}, 0, 0.3);
    part(tilt_, [](Fineness in) { return primitives::torus(0.5, 0.026, in(48), in(6)); }, led_, {0, 0.03, 0});

    light_ = std::make_shared<Light>();
    light_->kind = Light::Kind::omni;
    light_->intensity = 0;
    light_->attenuationStart = 0;
    light_->attenuationEnd = 2.2;
    light_->attenuationExponent = 2;
    Node& lamp = tilt_.addChild("lamp");
    lamp.position = {0, -0.18, 0};
    lamp.light = light_;

    glowMaterial_ = Materials::additive(textures.puff());
    glow_.geometry = std::make_shared<const Geometry>(primitives::plane(1.7, 1.7));
    glow_.materials = {glowMaterial_};
    glow_.eulerAngles = {-quarter, 0, 0};
    glow_.position = {0, -0.29, 0};
    glow_.renderingOrder = 5;
    glow_.castsShadow = false;
}

void DetectorRig::buildShaft() {
    const MaterialRef black = dark(), paint = orange();
    const double tilt = glm::radians(shaftTilt);
    const glm::dvec3 direction(0, std::sin(tilt), std::cos(tilt));
    const glm::dvec3 along(glm::radians(90 - shaftTilt), 0, 0);  // turns a cylinder's axis to `direction`
    const auto onShaft = [&](double distance, double above) {
        return direction * distance + glm::dvec3(0, above, 0);
    };

    const glm::dvec3 bodyAngles(-tilt, 0, 0);
    const auto body = [&](Fineness in) {
        Assembly assembly(bodyAngles);
        assembly.add(primitives::box(0.12, 0.16, 0.22, 0.03), {0, 0.1, 0});
        assembly.add(primitives::box(0.34, 0.2, 0.5, 0.05), onShaft(3.1, 2 * shaftFoot), bodyAngles);
        assembly.add(primitives::cylinder(0.075, 0.7, in(24)), onShaft(3.75, shaftFoot), along);
        return assembly.take();
    };
    part(
        yaw_, [](Fineness in) { return primitives::cylinder(0.06, 5, in(24)); }, steel(),
        onShaft(2.5, shaftFoot), along);
    part(
        yaw_, [](Fineness in) { return primitives::cylinder(0.062, 0.18, in(24)); }, paint,
        onShaft(1.6, shaftFoot), along);
    part(yaw_, body, black, {0, 0, 0}, bodyAngles);
    part(
        yaw_, [](Fineness in) { return primitives::tube(0.16, 0.2, 0.22, in(32)); }, paint,
        onShaft(4.85, shaftFoot + 0.12), along);

    // The cable winds from the coil's hub up to the control box.
    const auto cable = [&](Fineness in) {
        std::vector<glm::dvec3> path;
        const int points = in(63);
        for (int i = 0; i <= points; ++i) {
            const double s = static_cast<double>(i) / points, turn = s * 7 * 2 * std::numbers::pi;
            const glm::dvec3 out = glm::dvec3(1, 0, 0) * std::cos(turn) +
                                   glm::dvec3(0, direction.z, -direction.y) * std::sin(turn);
            path.push_back(onShaft(0.15 + 2.7 * s, shaftFoot) + out * 0.074);
        }
        return shapes::bar(path, {0.013}, in(4));
    };
    part(yaw_, cable, black);
}

void DetectorRig::place(const glm::dvec3& at, const glm::dvec2& velocity, double dt, double lift) {
    root_.position = {at.x, at.y + lift + hover, at.z};
    const double share = 1 - std::exp(-leanPerSecond * dt);
    const glm::dvec2 target(std::clamp(0.05 * velocity.x, -1.0, 1.0),
                            std::clamp(0.05 * velocity.y, -1.0, 1.0));
    lean_ += (target - lean_) * share;
    const glm::dvec2 slope = Terrain::slope(at.x, at.z);
    tilt_.eulerAngles = {leanReach * lean_.y - std::atan(slope.y), 0,
                         std::atan(slope.x) - leanReach * lean_.x};
    yaw_.eulerAngles.y = std::atan2(hand.x - at.x, hand.y - at.z);
    glow_.position.y = -hover - lift + glowHeight;
}

void DetectorRig::setSignal(double strength, const Colour& tint) {
    const double k = std::clamp(strength, 0.0, 1.0);
    const auto dimmed = [&](double factor) {
        return Colour{tint.r * factor, tint.g * factor, tint.b * factor, 1};
    };
    led_->emission = dimmed(1.2 * k + 0.15);
    light_->colour = tint;
    light_->intensity = 70 * k;
    glowMaterial_->multiply = dimmed(0.12 * k);
}

}  // namespace gull
