#include "Gullwick/Scene/ItemModels.h"

#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/Lathe.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>

namespace gull::ItemModels {

namespace {

using primitives::box;
using primitives::cylinder;
using primitives::sphere;
using primitives::torus;
using MaterialRef = std::shared_ptr<Material>;

constexpr double quarter = std::numbers::pi / 2;

MaterialRef gold(double rough = 0.22) {
    return Materials::pbr(RGB{1, 0.78, 0.34}, 1, rough);
}
MaterialRef brass() {
    return Materials::pbr(RGB{0.86, 0.66, 0.36}, 1, 0.3);
}
MaterialRef iron() {
    return Materials::pbr(RGB{0.28, 0.25, 0.23}, 0.85, 0.6);
}
MaterialRef rust() {
    return Materials::pbr(RGB{0.45, 0.22, 0.1}, 0.4, 0.85);
}
MaterialRef aluminium() {
    return Materials::pbr(RGB{0.88, 0.89, 0.92}, 1, 0.2);
}

MaterialRef glass() {
    auto material = Materials::pbr(Colour{0.9, 0.95, 1, 0.18}, 0, 0.02);
    material->blend = Material::Blend::alpha;
    material->opacity = 0.35;
    material->writesDepth = false;
    return material;
}

MaterialRef stone(const RGB& colour, const RGB& glow, double metal, double rough) {
    auto material = Materials::pbr(colour, metal, rough);
    material->emission = glow.colour();
    return material;
}

MaterialRef ruby() {
    return stone({0.75, 0.04, 0.1}, {0.25, 0, 0.03}, 0.1, 0.05);
}
MaterialRef emerald() {
    return stone({0.05, 0.75, 0.38}, {0, 0.18, 0.08}, 0.15, 0.04);
}

Node& part(Node& parent, Geometry geometry, std::vector<MaterialRef> materials,
           const glm::dvec3& at = {0, 0, 0}, const glm::dvec3& angles = {0, 0, 0}) {
    Node& node =
        parent.add(makeNode(std::make_shared<const Geometry>(std::move(geometry)), std::move(materials)));
    node.position = at;
    node.eulerAngles = angles;
    return node;
}

/// Gives `node` fewer triangles for quick pictures, in which it is about a hundred pixels wide.
void coarser(Node& node, Geometry geometry) {
    node.coarseGeometry = std::make_shared<const Geometry>(std::move(geometry));
}

/// Light is reflected many times inside a cut stone: some facets come out dark, some bright, all darker
/// toward the point.
Geometry cutStone(double radius, int facets) {
    Geometry gem = shapes::gem(radius, facets);
    for (Geometry::Vertex& vertex : gem.vertices) {
        const double turn = std::atan2(vertex.normal.z, vertex.normal.x);
        const double facet = 0.5 + 0.5 * std::sin(7.3 * turn + 5.1 * vertex.normal.y);
        const double depth = std::clamp(1 + 0.55 * vertex.position.y / radius, 0.0, 1.3);
        const auto light = static_cast<float>((0.35 + 1.25 * facet) * depth);
        vertex.colour = {light, light, light, 1};
    }
    return gem;
}

void coin(Node& parent, Textures& textures) {
    constexpr double radius = 0.34;
    auto face = gold();
    face->diffuseMap.texture = textures.doubloonColour();
    face->diffuse = {1, 1, 1, 1};  // the picture is gold already
    face->normalMap.texture = textures.doubloonNormal();
    part(parent, cylinder(radius, 0.18 * radius, 64), {gold(0.35), face, face}, {}, {quarter, 0, 0});
}

void ring(Node& parent) {
    coarser(part(parent, torus(0.26, 0.055, 64), {gold()}, {}, {quarter, 0, 0}), torus(0.26, 0.055, 48, 12));
    part(parent,
         shapes::lathe({{0, 0},
                        {0.1, 0},
                        {0.114, 0.002},
                        {0.12, 0.014},
                        {0.12, 0.046},
                        {0.114, 0.058},
                        {0.1, 0.06},
                        {0, 0.06}},
                       48, false, 1),
         {gold()}, {0, 0.28, 0});
    part(parent, cutStone(0.095, 10), {ruby()}, {0, 0.36, 0});
}

/// The case that watch and compass share: a drum whose front shows `face`, a bezel, a domed back and glass.
void roundCase(Node& parent, const MaterialRef& metal, const MaterialRef& face, double height,
               double bezelPipe, double front, double glassRadius, double glassDepth) {
    part(parent, cylinder(0.32, height, 64), {metal, face, metal}, {}, {quarter, 0, 0});
    coarser(part(parent, torus(0.32, bezelPipe, 64), {metal}, {0, 0, front}, {quarter, 0, 0}),
            torus(0.32, bezelPipe, 48, 8));
    Node& back = part(parent, sphere(0.315, 48), {metal}, {0, 0, -0.5 * height});
    back.scale = {1, 1, 0.14};
    coarser(back, sphere(0.315, 28));
    Node& crystal = part(parent, sphere(glassRadius, 48), {glass()}, {0, 0, front});
    crystal.scale = {1, 1, glassDepth};
    crystal.castsShadow = false;
    coarser(crystal, sphere(glassRadius, 28));
}

void watch(Node& parent, Textures& textures) {
    roundCase(parent, gold(), Materials::pictured(textures.watchDial(), 0, 0.4), 0.11, 0.03, 0.055, 0.31,
              0.16);
    part(parent, cylinder(0.045, 0.1, 24), {gold()}, {0, 0.36, 0});
    coarser(part(parent, torus(0.07, 0.018, 32, 16), {gold()}, {0, 0.46, 0}, {0, 0, quarter}),
            torus(0.07, 0.018, 20, 6));
    coarser(part(parent, torus(0.035, 0.01, 24, 12), {gold()}, {0, 0.535, 0}, {quarter, 0, 0}),
            torus(0.035, 0.01, 14, 5));
}

void key(Node& parent) {
    const MaterialRef metal = iron();
    // Polished by many hands; the most where it stands out.
    const auto worn = [](Geometry bare) {
        for (Geometry::Vertex& vertex : bare.vertices) {
            const float light = 4 + 1.5F * vertex.normal.y + vertex.normal.z;
            vertex.colour = {light, light, 0.96F * light, 1};
        }
        return bare;
    };
    part(parent, worn(cylinder(0.04, 0.72, 24)), {metal}, {}, {0, 0, quarter});
    coarser(part(parent, worn(torus(0.13, 0.035, 40, 16)), {metal}, {-0.48, 0, 0}, {quarter, 0, 0}),
            worn(torus(0.13, 0.035, 28, 8)));
    coarser(part(parent, worn(torus(0.05, 0.02, 24, 12)), {metal}, {-0.3, 0, 0}, {0, 0, quarter}),
            worn(torus(0.05, 0.02, 16, 6)));
    const auto tooth = [&](double height, double x, double y) {
        part(parent, worn(box(0.06, height, 0.05, 0.008)), {metal}, {x, y, 0});
    };
    tooth(0.13, 0.22, -0.085);
    tooth(0.09, 0.295, -0.065);
    tooth(0.15, 0.37, -0.095);
}

void compass(Node& parent, Textures& textures) {
    roundCase(parent, brass(), Materials::pictured(textures.compassRose(), 0, 0.5), 0.12, 0.035, 0.06, 0.3,
              0.2);
    coarser(part(parent, torus(0.07, 0.022, 32, 16), {brass()}, {0, 0.39, 0}, {0, 0, quarter}),
            torus(0.07, 0.022, 20, 6));
}

/// Coins strewn over the hoard's dome, half sunk into it.
Geometry strewnCoins(int segments) {
    const Geometry disc = cylinder(0.055, 0.016, segments);
    Xorshift draws(41);
    MeshBuilder mesh;
    for (int i = 0; i < 26; ++i) {
        const double turn = draws.unit() * 2 * std::numbers::pi, reach = std::sqrt(draws.unit()) * 0.4;
        Node place;
        const double x = reach * std::cos(turn), z = reach * std::sin(turn) * 0.6;
        place.position = {x, 0.26 + 0.28 * std::sqrt(0.25 - reach * reach) + 0.004, z};
        place.eulerAngles = {0.5 * (draws.unit() - 0.5) + z * 0.9, 0, 0.5 * (draws.unit() - 0.5) - x * 0.6};
        mesh.append(disc, place.localTransform());
    }
    return mesh.take();
}

void chest(Node& outer, Textures& textures) {
    Node& parent = outer.addChild("chest");
    parent.scale = glm::dvec3(0.85);
    const MaterialRef wood = Materials::pictured(textures.planks(), 0, 0.8);
    const MaterialRef metal = brass();
    constexpr double hoops[] = {-0.42, 0.42};

    part(parent, box(1.1, 0.55, 0.7, 0.03), {wood});
    for (const double x : hoops) part(parent, box(0.07, 0.57, 0.72), {metal}, {x, 0, 0});
    Node& hoard = part(parent, sphere(0.5, 48), {gold()}, {0, 0.26, 0});
    hoard.scale = {1, 0.28, 0.6};
    coarser(hoard, sphere(0.5, 24));
    coarser(part(parent, strewnCoins(20), {gold(0.3)}), strewnCoins(10));
    part(parent, box(0.2, 0.2, 0.03, 0.01), {metal}, {0, 0.15, 0.36});
    part(parent, box(0.04, 0.08, 0.034), {Materials::pbr(RGB{0.05, 0.04, 0.03}, 0, 0.9)}, {0, 0.13, 0.362});

    Node& lid = parent.addChild("lid");
    lid.position = {0, 0.275, -0.35};
    // Laid along x the cylinder's own x axis points up, so squashing that one flattens the dome.
    Node& dome = part(lid, cylinder(0.35, 1.1, 48), {wood}, {0, 0, 0.35}, {0, 0, quarter});
    dome.scale = {0.55, 1, 1};
    for (const double x : hoops) {
        Node& hoop = part(lid, torus(0.35, 0.035, 48, 16), {metal}, {x, 0, 0.35}, {0, 0, quarter});
        hoop.scale = {0.55, 1, 1};
        coarser(hoop, torus(0.35, 0.035, 32, 8));
    }
    part(lid, box(0.16, 0.2, 0.04), {metal}, {0, 0.18, 0.36});
    part(lid, box(0.12, 0.16, 0.03, 0.01), {metal}, {0, 0, 0.72});
}

void cap(Node& parent) {
    part(parent, cylinder(0.17, 0.06, 21),
         {Materials::pbr(RGB{0.75, 0.12, 0.1}, 0.7, 0.45), Materials::pbr(RGB{0.75, 0.75, 0.72}, 0.9, 0.4),
          aluminium()},
         {}, {quarter, 0, 0});
}

void can(Node& parent, Textures& textures) {
    Node& crushed = part(parent, cylinder(0.17, 0.56, 48),
                         {Materials::pictured(textures.canLabel(), 0.6, 0.35), aluminium(), aluminium()}, {},
                         {0, 0, 0.2});
    crushed.scale = {1, 0.85, 0.82};
}

void nail(Node& parent) {
    const MaterialRef metal = rust();
    part(parent, cylinder(0.028, 0.42, 16), {metal}, {0, 0.1, 0});
    Node& bend = parent.addChild("bend");
    bend.position = {0, -0.11, 0};
    bend.eulerAngles.z = 0.6;
    part(bend, cylinder(0.028, 0.3, 16), {metal}, {0, -0.15, 0});
    part(parent, cylinder(0.07, 0.025, 24), {metal}, {0, 0.32, 0});
}

void foil(Node& parent) {
    // Creases: a few planes along which the ball was pressed, different for every direction.
    const Geometry ball = mesh::displaced(primitives::geodesicSphere(0.2, 7), [](const glm::dvec3& p) {
        const glm::dvec3 n = glm::normalize(p);
        const double fold = std::abs(std::sin(9 * n.x + 4 * n.y)) + std::abs(std::sin(8 * n.y - 7 * n.z)) +
                            std::abs(std::sin(11 * n.z + 5 * n.x));
        const double grain = std::sin(31 * n.x + 17 * n.z) * std::sin(27 * n.y + 11 * n.x);
        return p * (0.8 + 0.11 * fold + 0.025 * grain);
    });
    Node& node = part(parent, mesh::withNormals(ball, 0), {Materials::pbr(RGB{0.85, 0.86, 0.9}, 1, 0.32)}, {},
                      {0.4, 0.7, 0.2});
    node.scale = {1.2, 0.7, 0.9};
}

}  // namespace

std::unique_ptr<Node> node(ItemKind kind, Textures& textures) {
    auto parent = std::make_unique<Node>(std::string(rawValue(kind)));
    switch (kind) {
        case ItemKind::coin:
            coin(*parent, textures);
            break;
        case ItemKind::ring:
            ring(*parent);
            break;
        case ItemKind::watch:
            watch(*parent, textures);
            break;
        case ItemKind::key:
            key(*parent);
            break;
        case ItemKind::gem:
            part(*parent, cutStone(0.3, 8), {emerald()});
            break;
        case ItemKind::compass:
            compass(*parent, textures);
            break;
        case ItemKind::chest:
            chest(*parent, textures);
            break;
        case ItemKind::cap:
            cap(*parent);
            break;
        case ItemKind::can:
            can(*parent, textures);
            break;
        case ItemKind::nail:
            nail(*parent);
            break;
        case ItemKind::foil:
            foil(*parent);
            break;
    }
    return parent;
}

}  // namespace gull::ItemModels
