#include "Gullwick/Scene/Terrain.h"

#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <cmath>
#include <glm/common.hpp>
#include <glm/geometric.hpp>

namespace gull {

namespace Terrain {

namespace {

constexpr double seawardEdge = -5;  // where the beach ends and the sea floor falls away
constexpr double slopeReach = 0.05;

}  // namespace

double height(double x, double z) {
    const double beach =
        z >= seawardEdge ? (z - seawardEdge) * 0.035 : -0.13 * std::pow(seawardEdge - z, 1.2);
    const double undulation = 0.05 * std::sin(0.45 * x + 0.3 * z) + 0.03 * std::sin(1.1 * x - 0.7 * z);
    const double dune = (0.7 + 0.3 * std::sin(0.5 * x)) * glm::smoothstep(7.0, 16.0, z) * 0.6;
    const double side = (1.0 + 0.3 * std::sin(0.6 * z)) * glm::smoothstep(10.0, 17.0, std::abs(x)) * 0.45;
    return dune + side + undulation + beach;
}

glm::dvec2 slope(double x, double z) {
    const double reach = 2 * slopeReach;
    return {(height(x + slopeReach, z) - height(x - slopeReach, z)) / reach,
            (height(x, z + slopeReach) - height(x, z - slopeReach)) / reach};
}

glm::dvec3 world(const PlotPoint& point) {
    const double x = (point.x - 0.5) * plotWidth;
    const double z = (0.5 - point.y) * plotDepth;
    return {x, height(x, z), z};
}

PlotPoint plotPoint(double x, double z) {
    return {x / plotWidth + 0.5, z / -plotDepth + 0.5};
}

double shoreZ(double level) {
    return shoreZ(0, level);
}

double shoreZ(double x, double level) {
    double low = -20, high = 6;
    for (int step = 0; step < 40; ++step) {
        const double middle = (low + high) / 2;
        (level <= height(x, middle) ? high : low) = middle;
    }
    return (low + high) / 2;
}

Geometry sandGeometry(const BeachLook& look) {
    return SandMesh().coloured(look);
}

}  // namespace Terrain

namespace {

constexpr std::uint32_t columns = 153;
constexpr std::uint32_t rows = 109;
constexpr double spacing = 0.5;
constexpr std::uint32_t coarseStep = 4;
constexpr double left = -38;
constexpr double top = -24;
constexpr double alwaysSunk = -10;  // up to this z no dune reaches the water's surface
constexpr double detailTile = 3.2;
constexpr RGB wetSand{0.32, 0.27, 0.22};
constexpr std::uint64_t noiseSeed = 77;
constexpr double reach = 160;      // how far the surroundings go to the sides
constexpr double seaReach = -110;  // and out to sea
constexpr double landReach = 60;   // and behind the viewer: a tall narrow window is seen from far back
constexpr double underlap =
    0.03;  // the surroundings lie this much lower and reach this far under the grid's edge
constexpr double overlap = 0.5;

/// How wet the sand is at a place, 0 dry to 1.
double wetness(double height, double z) {
    return (height < -0.25 ? 0.1 : 0) + 0.9 * glm::smoothstep(0.0, 1.0, (z + 3.4) / -2.8);
}

/// A factor for the roughness of sand: the wettest sand is covered by a film of water.
float dryness(double wet) {
    const double t = std::clamp((wet - 0.35) / 0.5, 0.0, 1.0);
    return static_cast<float>(1 - 0.75 * t * t * (3 - 2 * t));
}

/// Two triangles for every cell of a grid of vertices, row by row.
std::vector<std::uint32_t> gridIndices(std::uint32_t across, std::uint32_t deep) {
    std::vector<std::uint32_t> indices;
    indices.reserve((across - 1) * (deep - 1) * 6);
    for (std::uint32_t row = 0; row + 1 < deep; ++row) {
        for (std::uint32_t column = 0; column + 1 < across; ++column) {
            const std::uint32_t a = row * across + column, below = a + across;
            indices.insert(indices.end(), {a, below, a + 1, a + 1, below, below + 1});
        }
    }
    return indices;
}

/// A grid of sand in pieces of that length between two corners, for the land beyond the fine one.
void addLand(Geometry& geometry, double piece, const glm::dvec2& from, const glm::dvec2& to) {
    const auto across = static_cast<std::uint32_t>(std::ceil((to.x - from.x) / piece));
    const auto deep = static_cast<std::uint32_t>(std::ceil((to.y - from.y) / piece));
    const auto base = static_cast<std::uint32_t>(geometry.vertices.size());
    for (std::uint32_t row = 0; row <= deep; ++row) {
        for (std::uint32_t column = 0; column <= across; ++column) {
            const double x = from.x + (to.x - from.x) * column / across;
            const double z = from.y + (to.y - from.y) * row / deep;
            const glm::dvec2 slope = Terrain::slope(x, z);
            Geometry::Vertex vertex;
            vertex.position = {x, Terrain::height(x, z) - underlap, z};
            vertex.normal = glm::vec3(glm::normalize(glm::dvec3(-slope.x, 1, -slope.y)));
            vertex.uv0 = {x / detailTile, z / detailTile};
            vertex.uv1 = {(x + 8) * 0.0625, (z + 5) / 10};
            vertex.roughness = dryness(wetness(vertex.position.y, z));
            geometry.vertices.push_back(vertex);
        }
    }
    for (const std::uint32_t index : gridIndices(across + 1, deep + 1))
        geometry.indices.push_back(base + index);
}

/// Everything beyond the fine grid.
Geometry landAround(double piece) {
    const double right = left + spacing * (columns - 1), near = top + spacing * (rows - 1);
    Geometry land;
    addLand(land, piece, {-reach, seaReach}, {reach, top + overlap});
    addLand(land, piece, {-reach, top}, {left + overlap, near});
    addLand(land, piece, {right - overlap, top}, {reach, near});
    addLand(land, piece, {-reach, near - overlap}, {reach, landReach});
    land.elements = {{0, static_cast<std::uint32_t>(land.indices.size())}};
    return land;
}

glm::vec4 linear(const RGB& colour) {
    return {std::pow(colour.r, 2.2), std::pow(colour.g, 2.2), std::pow(colour.b, 2.2), 1};
}

/// The land in the colours of `look`; the sea floor takes on the water's with depth.
Geometry withLook(Geometry land, const BeachLook& look) {
    const double edgeDepth = -Terrain::height(0, top);
    const RGB deep = look.water.scaled(0.5);
    for (Geometry::Vertex& vertex : land.vertices) {
        const double y = vertex.position.y, z = vertex.position.z;
        const double sunk = 1 - std::exp(-std::max(0.0, -y - edgeDepth) / 7);
        vertex.colour = linear(look.sand.mixed(wetSand, 0.5 * wetness(y, z)).mixed(deep, sunk));
    }
    return land;
}

}  // namespace

SandMesh::SandMesh() {
    bare_.vertices.reserve(columns * rows);
    shades_.reserve(columns * rows);
    Xorshift noise(noiseSeed);
    for (std::uint32_t row = 0; row < rows; ++row) {
        for (std::uint32_t column = 0; column < columns; ++column) {
            const double x = left + spacing * column, z = top + spacing * row;
            const double height = Terrain::height(x, z);
            const glm::dvec2 slope = Terrain::slope(x, z);
            Geometry::Vertex vertex;
            vertex.position = {x, height, z};
            vertex.normal = glm::vec3(glm::normalize(glm::dvec3(-slope.x, 1, -slope.y)));
            vertex.uv0 = {x / detailTile, z / detailTile};
            vertex.uv1 = {(x + 8) * 0.0625, (z + 5) / 10};
            shades_.push_back({wetness(height, z), 1 + 0.06 * (noise.unit() - 0.5)});
            vertex.roughness = dryness(shades_.back().wet);
            bare_.vertices.push_back(vertex);
        }
    }
    bare_.indices = gridIndices(columns, rows);
    bare_.elements = {{0, static_cast<std::uint32_t>(bare_.indices.size())}};

    bareSurroundings_ = landAround(3);
    coarseSurroundings_ = landAround(6);
}

Geometry SandMesh::coloured(const BeachLook& look) const {
    Geometry geometry = bare_;
    for (std::size_t i = 0; i < shades_.size(); ++i) {
        const auto [wet, noise] = shades_[i];
        const RGB colour = look.sand.mixed(wetSand, 0.5 * wet).scaled(noise);
        geometry.vertices[i].colour = linear(colour);
    }
    return geometry;
}

Geometry SandMesh::coarse(const BeachLook& look) const {
    static_assert((columns - 1) % coarseStep == 0 && (rows - 1) % coarseStep == 0);
    Geometry geometry;
    for (std::uint32_t row = 0; row < rows; row += coarseStep) {
        for (std::uint32_t column = 0; column < columns; column += coarseStep) {
            const std::uint32_t i = row * columns + column;
            geometry.vertices.push_back(bare_.vertices[i]);
            geometry.vertices.back().colour = linear(look.sand.mixed(wetSand, 0.5 * shades_[i].wet));
        }
    }
    geometry.indices = gridIndices((columns - 1) / coarseStep + 1, (rows - 1) / coarseStep + 1);
    // The part that is always under the sea, then the rest.
    const auto sunk = static_cast<std::uint32_t>((alwaysSunk - top) / (spacing * coarseStep)) * 6 *
                      ((columns - 1) / coarseStep);
    geometry.elements = {{0, sunk}, {sunk, static_cast<std::uint32_t>(geometry.indices.size()) - sunk}};
    return geometry;
}

Geometry SandMesh::surroundings(const BeachLook& look) const {
    return withLook(bareSurroundings_, look);
}
Geometry SandMesh::coarseSurroundings(const BeachLook& look) const {
    return withLook(coarseSurroundings_, look);
}

}  // namespace gull
