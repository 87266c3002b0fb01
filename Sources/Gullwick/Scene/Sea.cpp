#include "Gullwick/Scene/Sea.h"

#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace gull {

namespace {

constexpr double pi = std::numbers::pi;
constexpr double width = 320;
constexpr double swellPeriod = 7.5;  // seconds, of the swell and of a breaker's way in
constexpr double foamRepeats = 80;
constexpr double breakerRepeats = 60;
constexpr glm::dvec2 waveRepeats(60, 38);
constexpr double foamDepth = 1.5;
constexpr double foamReach = 32;        // to either side the foam follows the shore
constexpr double foamPiece = 1;         // from bend to bend
constexpr double foamLevelStep = 0.01;  // of the water, from one shape of the foam to the next

void layFlat(Node& node, int order) {
    node.eulerAngles = {-pi / 2, 0, 0};
    node.renderingOrder = order;
    node.castsShadow = false;
    node.layer = Layer::moving;
}

std::shared_ptr<Material> foamStrip(Textures& textures, double repeats) {
    auto material = std::make_shared<Material>();
    material->lighting = Material::Lighting::lambert;
    material->diffuseMap.texture = textures.foam();
    material->diffuseMap.wrapS = Wrap::repeat;
    material->diffuseMap.scale.x = repeats;
    material->blend = Material::Blend::alpha;
    material->writesDepth = false;
    return material;
}

}  // namespace

Sea::Sea(Node& parent, Textures& textures)
    : water_(parent.addChild("water")),
      waterMaterial_(Materials::pbr(RGB{1, 1, 1}, 0, 0.06)),
      foam_(parent.addChild("foam")),
      foamMaterial_(foamStrip(textures, foamRepeats)) {
    Channel& waves = waterMaterial_->normalMap;
    waves.texture = textures.waterNormal();
    waves.intensity = 0.55;
    waves.wrapS = waves.wrapT = Wrap::repeat;
    waves.scale = waveRepeats;
    waterMaterial_->blend = Material::Blend::alpha;
    waterMaterial_->smooth = true;
    water_.geometry = std::make_shared<const Geometry>(primitives::plane(width, 200));
    water_.materials = {waterMaterial_};
    water_.position = {0, -0.2, -90};
    layFlat(water_, 2);

    foam_.materials = {foamMaterial_};
    layFlat(foam_, 3);

    const auto strip = std::make_shared<const Geometry>(primitives::plane(width, 2.6));
    for (std::size_t i = 0; i < breakers_.size(); ++i) {
        Breaker& breaker = breakers_[i];
        breaker.material = foamStrip(textures, breakerRepeats);
        breaker.material->diffuseMap.offset.x = 0.37 * static_cast<double>(i);
        breaker.material->opacity = 0;
        breaker.node = &parent.add(makeNode(strip, {breaker.material}));
        breaker.node->name = "breaker";
        layFlat(*breaker.node, 3);
    }
}

void Sea::setLook(const BeachLook& look, Textures& textures) {
    // The picture's alpha is the sea's opacity.
    waterMaterial_->diffuseMap.texture = textures.waterColour(look);
}

const GeometryRef& Sea::foamAlongShore(double level) {
    const int step = static_cast<int>(std::lround(level / foamLevelStep));
    GeometryRef& shape = foamShapes_[step];
    if (shape) return shape;
    const double middle = Terrain::shoreZ(0, step * foamLevelStep);
    MeshBuilder mesh;
    const auto edges = [&](double x) {
        // Beyond the sand that one sees the strip runs straight.
        const double bend =
            Terrain::shoreZ(std::clamp(x, -foamReach, foamReach), step * foamLevelStep) - middle;
        const auto corner = [&](double out, double v) {
            return mesh.vertex({x, out - bend, 0}, {0, 0, 1}, {x / width + 0.5, v});
        };
        const std::uint32_t landward = corner(-foamDepth / 2, 0);
        return std::pair{landward, corner(foamDepth / 2, 1)};
    };
    auto last = edges(-width / 2);
    for (double x = -foamReach; x <= foamReach + foamPiece; x += foamPiece) {
        const auto next = edges(x > foamReach ? width / 2 : x);
        mesh.quad(last.first, next.first, next.second, last.second);
        last = next;
    }
    shape = std::make_shared<const Geometry>(mesh.take());
    return shape;
}

double Sea::level(double time, double tide, const std::optional<double>& floodStart) {
    const double w = 2 * pi * time;
    double level = 0.032 * std::sin(w / swellPeriod) + 0.01 * std::sin(w / 2.6) + 0.2 * tide - 0.21;
    if (floodStart) {
        const double left = 1 - std::clamp((time - *floodStart) / 1.6, 0.0, 1.0);
        level += (1 - std::pow(left, 2.2)) * 0.85;
    }
    return level;
}

void Sea::update(double time, double tide, const std::optional<double>& floodStart) {
    const double surface = level(time, tide, floodStart);
    const double shore = Terrain::shoreZ(surface);
    water_.position.y = surface;
    waterMaterial_->normalMap.offset = {0.006 * time, 0.011 * time};

    foam_.geometry = foamAlongShore(surface);
    foam_.position = {0, surface + 0.012, shore - 0.5};
    foamMaterial_->opacity = 0.45 + 0.5 * (0.5 + 0.5 * std::sin(2 * pi * time / swellPeriod + 0.6));
    foamMaterial_->diffuseMap.offset.x = 0.004 * time;

    for (std::size_t i = 0; i < breakers_.size(); ++i) {
        const double turns = time / swellPeriod + static_cast<double>(i) / 3;
        const double p = turns - std::floor(turns);
        const double swell = std::sin(pi * p);
        breakers_[i].node->position = {0, surface + 0.008, shore - 15 + 14.2 * p};
        breakers_[i].node->scale.y = 1 + 0.5 * p;
        breakers_[i].material->opacity = 0.3 * swell * swell;
    }
}

}  // namespace gull
