#include "Gullwick/Scene/Sea.h"

#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Materials.h"
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
constexpr double reach = 32;            // the shapes bend this far to either side and are straight beyond
constexpr double piece = 1;             // from bend to bend
constexpr double foamLevelStep = 0.01;  // change of the water level from one foam shape to the next

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

/// A smooth, irregular curve along the shore, -1 to 1; `phase` shifts it.
double wander(double x, double phase) {
    return 0.5 * std::sin(0.21 * x + phase) + 0.3 * std::sin(0.53 * x - 1.7 * phase) +
           0.2 * std::sin(1.13 * x + 2.3 * phase);
}

/// A cut through a strip of foam at one place along the shore.
struct StripRow {
    double out;    ///< across the strip: toward the sea from its middle
    double v;      ///< of the picture
    double alpha;  ///< times the picture's
};

/// A strip in the x-y plane, `width` long, its rows given for every place along it, landward first.
template <typename RowsAt>
GeometryRef strip(RowsAt rowsAt) {
    MeshBuilder mesh;
    std::vector<float> alphas;
    std::vector<std::uint32_t> last;
    for (double x = -reach - piece; x <= reach + piece; x += piece) {
        const double bound = std::clamp(x, -reach, reach);
        const double at = x < -reach ? -width / 2 : x > reach ? width / 2 : x;
        std::vector<std::uint32_t> column;
        for (const StripRow& row : rowsAt(bound)) {
            column.push_back(mesh.vertex({at, row.out, 0}, {0, 0, 1}, {at / width + 0.5, row.v}));
            alphas.push_back(static_cast<float>(row.alpha));
        }
        for (std::size_t i = 0; i + 1 < last.size(); ++i) {
            mesh.quad(last[i], column[i], column[i + 1], last[i + 1]);
        }
        last = std::move(column);
    }
    Geometry geometry = mesh.take();
    for (std::size_t i = 0; i < alphas.size(); ++i) geometry.vertices[i].colour.a = alphas[i];
    return std::make_shared<const Geometry>(std::move(geometry));
}

/// A breaker's crest wanders, breaks in some places and not in others, and has soft edges.
GeometryRef breakerShape(double phase) {
    return strip([phase](double x) {
        const double bend = 0.55 * wander(x, phase);
        const double broken = std::clamp(0.55 + 0.75 * wander(1.4 * x, 4 + 2.1 * phase), 0.06, 1.0);
        const double front = 0.08 * wander(3.7 * x, 1 + phase);
        const auto row = [&](double v, double alpha) {
            return StripRow{(v - 0.5) * breakerDepth + bend + front * (1 - v), v, alpha * broken};
        };
        return std::array{row(0, 0), row(0.1, 1), row(0.3, 0.8), row(1, 0)};
    });
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

    for (std::size_t i = 0; i < breakers_.size(); ++i) {
        Breaker& breaker = breakers_[i];
        breaker.material = foamStrip(textures, breakerRepeats);
        breaker.material->diffuseMap.offset.x = 0.37 * static_cast<double>(i);
        breaker.material->opacity = 0;
        breaker.material->smooth = true;
        breaker.node = &parent.add(makeNode(breakerShape(2.2 * static_cast<double>(i)), {breaker.material}));
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
    shape = strip([&](double x) {
        const double shore = -(Terrain::shoreZ(x, step * foamLevelStep) - middle);
        const double tongue = 0.16 * wander(2.3 * x, 1.3) + 0.05 * wander(9 * x, 0.4);
        const double thick = std::clamp(0.8 + 0.45 * wander(1.9 * x, 5.1), 0.3, 1.0);
        const auto row = [&](double v, double alpha) {
            return StripRow{(v - 0.5) * foamDepth + shore + tongue * (1 - v), v, alpha * thick};
        };
        return std::array{row(0, 0.25), row(0.05, 1), row(0.4, 0.8), row(1, 0.25)};
    });
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
