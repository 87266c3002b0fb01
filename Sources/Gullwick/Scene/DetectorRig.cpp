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
    bool isCoarse() const { return share_ < fine; }
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

/// A part of a dark mesh in a colour of its own.
Geometry tinted(Geometry geometry, const RGB& colour) {
    const glm::vec3 base = glm::vec3(0.07F, 0.075F, 0.08F), wanted(colour.r, colour.g, colour.b);
    const glm::vec3 gain = glm::pow(wanted, glm::vec3(2.2F)) / glm::pow(base, glm::vec3(2.2F));
    for (Geometry::Vertex& vertex : geometry.vertices) vertex.colour *= glm::vec4(gain, 1);
    return geometry;
}

/// What the hand turns and the eye reads on top of the control box: a dial with its needle, a knob, two
/// buttons.
void addFace(Assembly& assembly, const glm::dvec3& box, const glm::dvec3& angles, Fineness in) {
    Node turned;
    turned.position = box;
    turned.eulerAngles = angles;
    const auto add = [&](Geometry geometry, const glm::dvec3& at, const RGB& colour, double turn = 0) {
        Node place;
        place.position = at;
        place.eulerAngles = {0, turn, 0};
        const glm::dmat4 there = turned.localTransform() * place.localTransform();
        MeshBuilder mesh;
        mesh.append(tinted(std::move(geometry), colour), there);
        assembly.add(mesh.take());
    };
    add(primitives::box(0.25, 0.012, 0.23, 0), {0, 0.1, -0.08}, {0.2, 0.21, 0.22});
    add(primitives::box(0.21, 0.012, 0.19, 0), {0, 0.104, -0.08}, {0.4, 0.48, 0.38});
    add(primitives::box(0.012, 0.012, 0.13, 0), {0.015, 0.108, -0.07}, {0.05, 0.06, 0.05}, -0.5);
    add(primitives::cylinder(0.055, 0.06, in(15)), {-0.06, 0.12, 0.12}, {0.95, 0.42, 0.18});
    for (const double z : {0.09, 0.16})
        add(primitives::cylinder(0.026, 0.03, in(9)), {0.07, 0.107, z}, {0.45, 0.44, 0.42});
}

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
        // Edges narrower than a pixel would come and go as they glint.
        const double chamfer = in.isCoarse() ? 0 : 0.01;
        for (const double degrees : {0.0, 60.0, 120.0})
            assembly.add(primitives::box(1.2, 0.035, 0.06, chamfer), {}, {0, glm::radians(degrees), 0});
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
        const glm::dvec3 box = onShaft(3.1, 2 * shaftFoot);
        assembly.add(primitives::box(0.34, 0.2, 0.5, 0.05), box, bodyAngles);
        addFace(assembly, box, bodyAngles, in);
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
