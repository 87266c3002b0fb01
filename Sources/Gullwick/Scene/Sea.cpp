#include "Gullwick/Scene/Sea.h"

#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/Shoreline.h"
#include "Gullwick/Scene/SurfShapes.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace gull {

namespace {

constexpr double pi = std::numbers::pi;
constexpr double width = 320;
constexpr double swellPeriod = 7.5;  // seconds, of the swell and of a breaker's way in
constexpr double foamRepeats = 80;
constexpr double breakerRepeats = 60;
constexpr glm::dvec2 waveRepeats(60, 38);
constexpr double foamDepth = 1.5;
constexpr double breakerDepth = 2.6;
constexpr double foamHeight = 0.012;  // above the water
constexpr double foamStep = 0.01;     // change of the level from one shape to the next
constexpr double filmStep = 0.002;
constexpr std::size_t mostShapes = 48;  // kept: a swell needs ten, a flood a hundred
constexpr double swashHeight = 0.042;   // of the highest water above its mean

void layFlat(Node& node, int order) {
    node.eulerAngles = {-pi / 2, 0, 0};
    node.renderingOrder = order;
    node.castsShadow = false;
    node.layer = Layer::water;
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
      film_(parent.addChild("film")),
      filmMaterial_(Materials::pbr(Colour{1, 1, 1, 0}, 0, 0.14)),
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

    // Clear, and still: the sand's grain ripples what it mirrors.
    filmMaterial_->normalMap = waves;
    filmMaterial_->normalMap.intensity = 0.15;
    filmMaterial_->blend = Material::Blend::alpha;
    filmMaterial_->smooth = true;
    film_.materials = {filmMaterial_};
    film_.renderingOrder = 2;
    film_.castsShadow = false;
    film_.layer = Layer::water;

    foam_.materials = {foamMaterial_};
    layFlat(foam_, 3);

    for (std::size_t i = 0; i < breakers_.size(); ++i) {
        Breaker& breaker = breakers_[i];
        breaker.material = foamStrip(textures, breakerRepeats);
        breaker.material->diffuseMap.offset.x = 0.37 * static_cast<double>(i);
        breaker.material->opacity = 0;
        breaker.material->smooth = true;
        breaker.node = &parent.add(
            makeNode(SurfShapes::breaker(breakerDepth, 2.2 * static_cast<double>(i)), {breaker.material}));
        breaker.node->name = "breaker";
        layFlat(*breaker.node, 3);
    }
}

void Sea::setLook(const BeachLook& look, Textures& textures) {
    // The picture's alpha is the sea's opacity.
    waterMaterial_->diffuseMap.texture = textures.waterColour(look);
    filmMaterial_->diffuseMap.texture = waterMaterial_->diffuseMap.texture;
}

namespace {

/// The shape in `shapes` for `level`, rounded to a step; made by `make` from the rounded level when it is
/// first needed.
template <typename Make>
const GeometryRef& shapeAt(std::map<int, GeometryRef>& shapes, double level, double levelStep, Make make) {
    const int step = static_cast<int>(std::lround(level / levelStep));
    if (!shapes.contains(step) && shapes.size() >= mostShapes) shapes.clear();
    GeometryRef& shape = shapes[step];
    if (!shape) shape = make(step * levelStep);
    return shape;
}

/// The foam's place in z for a water level.
double foamMiddle(double level) {
    return Terrain::shoreZ(level) - 0.5;
}

}  // namespace

double Sea::mean(double tide) {
    return 0.2 * tide - 0.21;
}

double Sea::level(double time, double tide, const std::optional<double>& floodStart) {
    const double w = 2 * pi * time;
    double level = 0.032 * std::sin(w / swellPeriod) + 0.01 * std::sin(w / 2.6) + mean(tide);
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

    foam_.geometry = shapeAt(foamShapes_, surface, foamStep, [](double level) {
        return SurfShapes::foam(Shoreline(level), foamDepth, level + foamHeight, foamMiddle(level));
    });
    foam_.position = {0, surface + foamHeight, foamMiddle(surface)};
    foamMaterial_->opacity = 0.45 + 0.5 * (0.5 + 0.5 * std::sin(2 * pi * time / swellPeriod + 0.6));
    foamMaterial_->diffuseMap.offset.x = 0.004 * time;

    const double wetTo = mean(tide) + swashHeight;
    film_.hidden = surface > wetTo + 2 * swashHeight;  // the flood covers it
    film_.geometry = shapeAt(filmShapes_, wetTo, filmStep, [](double level) {
        return SurfShapes::film(Shoreline(level - 2 * swashHeight), Shoreline(level));
    });

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
