#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/ItemParts.h"
#include "Gullwick/Scene/Lathe.h"
#include "Gullwick/Scene/Materials.h"

#include <cmath>
#include <glm/gtc/matrix_transform.hpp>

namespace gull::itemParts {

namespace {

using primitives::box;
using primitives::cylinder;
using primitives::sphere;
using primitives::torus;

/// A struck disc, axis along y: a reeded side with filed edges, and two faces that show the inner `shown` of
/// their picture. Elements: side, top, bottom.
Geometry blank(double radius, double height, int segments, double shown) {
    const double y = height / 2, filed = 0.16 * height;
    MeshBuilder mesh;
    Geometry side = shapes::lathe(
        {{radius - filed, -y}, {radius, filed - y, true}, {radius, y - filed, true}, {radius - filed, y}},
        segments, false, 1);
    for (std::size_t i = 0; i < side.vertices.size(); ++i) {
        Geometry::Vertex& vertex = side.vertices[i];
        const bool ridge = std::lround(vertex.uv0.x * static_cast<float>(segments)) % 2 == 0;
        if (std::abs(vertex.normal.y) < 0.1F) vertex.colour = glm::vec4(glm::vec3(ridge ? 1.15F : 0.6F), 1);
    }
    mesh.append(side);
    mesh.endElement();
    for (const double facing : {1.0, -1.0}) {
        const glm::dvec3 normal(0, facing, 0);
        const auto at = [&](double share, int k) {
            const double turn = 2 * std::numbers::pi * k / segments;
            const double x = share * std::cos(turn), z = share * std::sin(turn);
            return mesh.vertex({(radius - filed) * x, facing * y, (radius - filed) * z}, normal,
                               {0.5 + 0.5 * shown * x, 0.5 - 0.5 * shown * facing * z});
        };
        const std::uint32_t middle = at(0, 0);
        for (int k = 0; k < segments; ++k)
            facing > 0 ? mesh.triangle(middle, at(1, k + 1), at(1, k))
                       : mesh.triangle(middle, at(1, k), at(1, k + 1));
        mesh.endElement();
    }
    return mesh.take();
}

/// The case that watch and compass share: a drum whose front shows `face`, a bezel, a domed back and glass.
void roundCase(Node& parent, const MaterialRef& metal, const MaterialRef& face, double height,
               double bezelPipe, double front, double glassRadius, double glassDepth) {
    part(parent, cylinder(0.32, height, 64), {metal, face, metal}, {}, {quarter, 0, 0});
    coarser(part(parent, torus(0.32, bezelPipe, 64, 12), {metal}, {0, 0, front}, {quarter, 0, 0}),
            torus(0.32, bezelPipe, 48, 8));
    Node& back = part(parent, sphere(0.315, 48), {metal}, {0, 0, -0.5 * height});
    back.scale = {1, 1, 0.14};
    coarser(back, sphere(0.315, 28));
    Node& crystal = part(parent, sphere(glassRadius, 48), {glass()}, {0, 0, front});
    crystal.scale = {1, 1, glassDepth};
    crystal.castsShadow = false;
    coarser(crystal, sphere(glassRadius, 28));
}

/// A magnetic needle in the xy plane, its red half up.
Geometry needle(double length, double half) {
    MeshBuilder mesh;
    for (const double end : {1.0, -1.0})
        for (const double side : {1.0, -1.0}) {
            // Folded along its middle: one side of each half is lighter.
            const glm::dvec3 red(0.6, 0.03, 0.02), steel(0.2, 0.22, 0.26);
            mesh.setColour((end > 0 ? red : steel) * (side > 0 ? 1.4 : 0.8));
            const glm::dvec3 ridge(0, 0, 0.012), tip(0, end * length, 0), edge(side * half, 0, 0);
            end* side > 0 ? mesh.flatTriangle(ridge, edge, tip) : mesh.flatTriangle(ridge, tip, edge);
        }
    return mesh.take();
}

}  // namespace

void coin(Node& parent, Textures& textures) {
    constexpr double radius = 0.34;
    constexpr double struck = 236.0 / 256;  // the picture's share that its rim encloses
    auto face = gold();
    face->diffuseMap.texture = textures.doubloonColour();
    face->diffuse = {1, 1, 1, 1};  // the picture is gold already
    face->normalMap.texture = textures.doubloonNormal();
    coarser(
        part(parent, blank(radius, 0.18 * radius, 96, struck), {gold(0.35), face, face}, {}, {quarter, 0, 0}),
        blank(radius, 0.18 * radius, 64, struck));
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
    MeshBuilder teeth;
    const auto tooth = [&](double height, double x, double y) {
        teeth.append(worn(box(0.06, height, 0.05, 0.008)),
                     glm::translate(glm::dmat4(1), glm::dvec3(x, y, 0)));
    };
    tooth(0.13, 0.22, -0.085);
    tooth(0.09, 0.295, -0.065);
    tooth(0.15, 0.37, -0.095);
    part(parent, teeth.take(), {metal});
}

void gem(Node& parent) {
    part(parent, cutStone(0.3, 8), {emerald()});
}

void compass(Node& parent, Textures& textures) {
    roundCase(parent, brass(), Materials::pictured(textures.compassRose(), 0, 0.5), 0.12, 0.035, 0.06, 0.3,
              0.2);
    part(parent, needle(0.2, 0.03), {Materials::pbr(RGB{1, 1, 1}, 0, 0.35)}, {0, 0, 0.066}, {0, 0, -0.5});
    coarser(part(parent, torus(0.07, 0.022, 32, 16), {brass()}, {0, 0.39, 0}, {0, 0, quarter}),
            torus(0.07, 0.022, 20, 6));
}

}  // namespace gull::itemParts
