#include "Gullwick/Scene/Digs.h"

#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/ItemModels.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>

namespace gull {

namespace {

constexpr double startDepth = 0.3;  // below the sand
constexpr double startScale = 0.4;
constexpr double sprayLasts = 1.5;  // seconds until its node is cleared away
constexpr double glowGain = 6;      // makes it the key light of what it accompanies
constexpr double settling = 0.3;    // seconds until a settled item has certainly been drawn at rest

/// A heap `height` high with the sand's own texture coordinates, so that its grain is as large, which is the
/// drier the lower it lies: at its foot it is of the ground's colour.
Geometry likeTheGround(Geometry geometry, double height) {
    for (Geometry::Vertex& vertex : geometry.vertices) {
        vertex.uv0 = glm::vec2(vertex.position.x, vertex.position.z) / 3.2F;
        const double foot = std::clamp(1 - vertex.position.y / (0.8 * height), 0.0, 1.0);
        vertex.colour = glm::vec4(glm::vec3(static_cast<float>(1 + 0.35 * foot)), 1);
    }
    return geometry;
}

/// Thrown-up sand is uneven: a bump field over directions from the centre.
double bump(const glm::dvec3& n) {
    return std::sin(5 * n.x + 2 * n.z) * std::sin(6 * n.z - 1.5 * n.x) +
           0.5 * std::sin(13 * n.x + 7 * n.y) * std::sin(11 * n.z + 3);
}

constexpr double rimRadius = 0.42, rimPipe = 0.13;
constexpr double flatter = 0.42;  // a rim's height, of its torus'

/// Draws what lies low out along the ground, so that thrown-up sand runs out instead of ending at an edge.
/// `away`: horizontal, from the middle of what was heaped up to `p`; `height`: of the heap.
glm::dvec3 runOut(const glm::dvec3& p, const glm::dvec2& away, double height) {
    const double low = std::clamp(1 - p.y / height, 0.0, 1.3);
    const double reach = 0.9 * low * low;
    return {p.x + away.x * reach, p.y, p.z + away.y * reach};
}

/// The inside of a hole: a disc whose normals and colours are those of a bowl, dark at its bottom.
Geometry bowl() {
    constexpr int rings = 6, spokes = 32;
    constexpr double radius = 0.42, steepness = 5, height = 0.03 / flatter;
    Geometry geometry;
    for (int ring = 0; ring <= rings; ++ring) {
        const double share = static_cast<double>(ring) / rings, r = share * radius;
        const float bright = static_cast<float>(0.16 + 0.74 * share * share);
        for (int spoke = 0; spoke <= spokes; ++spoke) {
            const double angle = 2 * std::numbers::pi * spoke / spokes;
            const glm::dvec2 out(std::cos(angle), std::sin(angle));
            Geometry::Vertex vertex;
            vertex.position = {out.x * r, height, out.y * r};
            const double slope = steepness * share * (1 - share);
            vertex.normal = glm::normalize(glm::dvec3(-out.x * slope, flatter, -out.y * slope));
            vertex.uv0 = glm::dvec2(out.x, out.y) * r / 3.2;
            vertex.colour = {bright, bright * 0.96F, bright * 0.9F, 1};
            geometry.vertices.push_back(vertex);
        }
    }
    for (std::uint32_t ring = 0; ring < rings; ++ring)
        for (std::uint32_t spoke = 0; spoke < spokes; ++spoke) {
            const std::uint32_t a = ring * (spokes + 1) + spoke, b = a + spokes + 1;
            geometry.indices.insert(geometry.indices.end(), {a, b + 1, b, a, a + 1, b + 1});
        }
    geometry.elements.push_back({0, static_cast<std::uint32_t>(geometry.indices.size())});
    return geometry;
}

/// Two parts: the rim, and the inside of its hole.
Geometry crumbledRim() {
    const auto crumbled = [](const glm::dvec3& p) {
        const glm::dvec3 ring = glm::normalize(glm::dvec3(p.x, 0, p.z)) * rimRadius;
        const double swell = 1 + 0.22 * bump(ring * 2.4);
        const glm::dvec3 moved = ring + (p - ring) * swell;
        return runOut(moved, {moved.x - ring.x, moved.z - ring.z}, rimPipe);
    };
    MeshBuilder builder;
    builder.append(likeTheGround(
        mesh::withNormals(mesh::displaced(primitives::torus(rimRadius, rimPipe, 48, 14), crumbled), 180),
        rimPipe));
    builder.endElement();
    Geometry rim = builder.take();
    // Appended by hand: a builder keeps no colours.
    const Geometry inside = bowl();
    const auto first = static_cast<std::uint32_t>(rim.vertices.size());
    const auto start = static_cast<std::uint32_t>(rim.indices.size());
    rim.vertices.insert(rim.vertices.end(), inside.vertices.begin(), inside.vertices.end());
    for (const std::uint32_t index : inside.indices) rim.indices.push_back(first + index);
    rim.elements.push_back({start, static_cast<std::uint32_t>(inside.indices.size())});
    return rim;
}

Geometry crumbledHeap() {
    const auto crumbled = [](const glm::dvec3& p) {
        const glm::dvec3 moved = p * (1 + 0.09 * bump(p * 3.2));
        return runOut(moved, {moved.x * 0.4, moved.z * 0.4}, 0.32);
    };
    return likeTheGround(mesh::withNormals(mesh::displaced(primitives::sphere(0.32, 28), crumbled), 180),
                         0.32);
}

/// The light of a treasure on the sand, initially dark.
std::shared_ptr<Light> glow() {
    auto light = std::make_shared<Light>();
    light->kind = Light::Kind::omni;
    light->colour = {1, 0.8, 0.45, 1};
    light->intensity = 0;
    light->attenuationStart = 0.6;
    light->attenuationEnd = 2.6;
    light->attenuationExponent = 1.4;
    light->gain = glowGain;
    return light;
}

std::unique_ptr<Node> twin(const Node& node) {
    auto copy = std::make_unique<Node>();
    copy->position = node.position;
    copy->eulerAngles = node.eulerAngles;
    copy->scale = node.scale;
    copy->castsShadow = node.castsShadow;
    copy->geometry = node.geometry;
    copy->coarseGeometry = node.coarseGeometry;
    copy->materials = node.materials;
    for (const auto& child : node.children()) copy->add(twin(*child));
    return copy;
}

}  // namespace

Digs::Digs(Stage& stage, Textures& textures, DelayedWork& delayedWork)
    : stage_(stage),
      textures_(textures),
      delayedWork_(delayedWork),
      rim_(std::make_shared<const Geometry>(crumbledRim())),
      heap_(std::make_shared<const Geometry>(crumbledHeap())) {}

void Digs::begin(Node& beachRoot, const BeachLook& look) {
    beachRoot_ = &beachRoot;
    sand_ = look.sand;
    spoil_ = Materials::pbr(look.sand.mixed({0.4, 0.33, 0.26}, 0.35), 0, 0.95);
    spoil_->normalMap.texture = textures_.sandNormal();
    spoil_->normalMap.wrapS = spoil_->normalMap.wrapT = Wrap::repeat;
    spoil_->diffuseMap.texture = textures_.sandDetail();
    spoil_->diffuseMap.wrapS = spoil_->diffuseMap.wrapT = Wrap::repeat;
    reveals_.clear();
    digCount_ = 0;
    beachToken_ = std::make_shared<char>();
}

void Digs::dig(const glm::dvec3& ground, const std::optional<ItemKind>& found, double time) {
    ++digCount_;
    leaveHole(ground);
    spray(ground, time);
    if (found) raise(*found, ground, time);
}

void Digs::leaveHole(const glm::dvec3& ground) {
    Node& rim = beachRoot_->add(makeNode(rim_, {spoil_}));
    rim.name = "rim";
    rim.position = ground + glm::dvec3(0, 0.02, 0);
    rim.scale = {1, 0.42, 1};
    Node& heap = beachRoot_->add(makeNode(heap_, {spoil_}));
    heap.name = "heap";
    heap.position = ground + glm::dvec3(0.62, 0.02, 0.38);
    heap.scale = {1.2, 0.38, 0.9};
    Box box = rim.bounds();
    box.include(heap.bounds());
    stage_.touchStill(box);
}

std::shared_ptr<ParticleSystem> Digs::sandSpray(double time) const {
    auto sand = std::make_shared<ParticleSystem>();
    sand->image = textures_.puff();
    sand->start = time;
    sand->seed = 2 * digCount_;
    sand->birthRate = 2200;
    sand->emissionDuration = 0.07;
    sand->lifeSpan = 0.75;
    sand->lifeSpanVariation = 0.25;
    sand->speed = 3.2;
    sand->speedVariation = 1.6;
    sand->spreadingAngle = 38;
    sand->acceleration = {0, -9, 0};
    sand->size = 0.07;
    sand->sizeVariation = 0.04;
    sand->colour = sand_.scaled(0.9).colour();
    sand->colourVariation = {0, 0, 0.1, 0};
    return sand;
}

void Digs::spray(const glm::dvec3& ground, double time) {
    Node& node = beachRoot_->addChild("spray");
    node.position = ground + glm::dvec3(0, 0.1, 0);
    node.layer = Layer::moving;
    node.particles.push_back(sandSpray(time));
    removeAfter(sprayLasts, node);
}

void Digs::removeAfter(double seconds, Node& node) {
    delayedWork_.after(seconds, [&node, beach = std::weak_ptr(beachToken_)] {
        if (!beach.expired()) node.removeFromParent();
    });
}

std::shared_ptr<ParticleSystem> Digs::sparkle(ItemKind kind, double time) const {
    const bool chest = kind == ItemKind::chest;
    auto sparks = std::make_shared<ParticleSystem>();
    sparks->image = textures_.sparkle();
    sparks->start = time;
    sparks->seed = 2 * digCount_ + 1;
    sparks->birthRate = chest ? 90 : 34;
    sparks->emissionDuration = chest ? 2.6 : 1.4;
    sparks->emitterRadius = chest ? 0.7 : 0.4;
    sparks->lifeSpan = 0.6;
    sparks->size = 0.12;
    sparks->sizeVariation = 0.08;
    sparks->speed = 0.6;
    sparks->spreadingAngle = 180;
    sparks->angularVelocity = 90;
    sparks->colour = {1, 0.92, 0.65, 1};
    sparks->intensity = 1.5;
    sparks->blend = Material::Blend::add;
    return sparks;
}

void Digs::raise(ItemKind kind, const glm::dvec3& ground, double time) {
    Reveal reveal;
    reveal.kind = kind;
    reveal.start = time;
    reveal.ground = ground;
    const double restX = ground.x - 0.75, restZ = ground.z + 0.25;
    reveal.rest = {restX, Terrain::height(restX, restZ) + 0.1, restZ};

    reveal.node = &beachRoot_->add(ItemModels::node(kind, textures_));
    reveal.node->position = ground - glm::dvec3(0, startDepth, 0);
    reveal.node->scale = glm::dvec3(startScale);
    reveal.node->layer = Layer::moving;

    if (isTreasure(kind)) {
        reveal.glow = &beachRoot_->addChild("glow");
        reveal.glow->layer = Layer::moving;
        reveal.glow->light = glow();

        reveal.node->particles.push_back(sparkle(kind, time));
    }
    reveals_.push_back(reveal);
}

void Digs::update(double time) {
    for (Reveal& reveal : reveals_) {
        if (reveal.done) continue;
        reveal.pose(time);
        if (time - reveal.start >= reveal.duration()) end(reveal);
    }
}

void Digs::end(Reveal& reveal) {
    reveal.done = true;
    if (reveal.glow) {
        reveal.glow->removeFromParent();
        reveal.glow = nullptr;
    }
    if (isTreasure(reveal.kind)) {
        reveal.node->removeFromParent();
        reveal.node = nullptr;
    } else {
        // From now on it is part of the still beach. A renderer may show that a little later; until then its
        // twin in the moving layer is visible.
        Node& moving = beachRoot_->add(twin(*reveal.node));
        moving.layer = Layer::moving;
        removeAfter(settling, moving);
        reveal.node->layer = Layer::inherited;
        stage_.touchStill(reveal.node->bounds());
    }
}

}  // namespace gull
