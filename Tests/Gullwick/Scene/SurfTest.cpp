#include "Gullwick/Scene/SceneTestSupport.h"
#include "Gullwick/Scene/Sea.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>

namespace gull {
namespace {

/// The places of `node`'s vertices with this picture coordinate across the strip that lie in view, along x.
std::vector<glm::dvec3> line(const Node& node, double v) {
    std::vector<glm::dvec3> places;
    for (const Geometry::Vertex& vertex : node.geometry->vertices) {
        const glm::dvec3 at(node.worldTransform() * glm::dvec4(glm::dvec3(vertex.position), 1));
        if (std::abs(static_cast<double>(vertex.uv0.y) - v) < 1e-6 && std::abs(at.x) <= 16)
            places.push_back(at);
    }
    return places;
}

/// The sharpest turn of a line on the ground, degrees.
double sharpestTurn(const std::vector<glm::dvec3>& places) {
    double most = 0;
    for (std::size_t i = 2; i < places.size(); ++i) {
        const auto way = [&](std::size_t k) {
            return std::atan2(places[k].z - places[k - 1].z, places[k].x - places[k - 1].x);
        };
        most = std::max(most, std::abs(way(i) - way(i - 1)));
    }
    return most * 180 / std::numbers::pi;
}

TEST(Surf, TheFoamFollowsTheWaterWithoutCornersAtEveryTide) {
    SceneOnClock world;
    for (double tide = 0; tide <= 1; tide += 0.02) {
        world.scene.tide = tide;
        world.step(0.7);
        const Node& foam = world.node("foam");
        const std::vector<glm::dvec3> front = line(foam, 0);
        ASSERT_GT(front.size(), 60U);
        EXPECT_LT(sharpestTurn(front), 14) << "at tide " << tide;
        const double level = Sea::level(world.scene.time, tide, {});
        double off = 0;
        for (const glm::dvec3& place : front) {
            EXPECT_GT(place.y, Terrain::height(place.x, place.z)) << "the sand does not cut it off";
            off = std::max(off, std::abs(Terrain::height(place.x, place.z) - level));
        }
        EXPECT_LT(off, 0.1) << "at tide " << tide << ": far from the waterline";
    }
}

TEST(Surf, TheSandIsWetAsFarAsTheSwellReachesAndTheFloodCoversIt) {
    SceneOnClock world;
    for (const double tide : {0.0, 0.45, 1.0}) {
        world.scene.tide = tide;
        double highest = -1, lowest = 1;
        for (int i = 0; i < 75; ++i) {
            world.step(0.1);
            highest = std::max(highest, Sea::level(world.scene.time, tide, {}));
            lowest = std::min(lowest, Sea::level(world.scene.time, tide, {}));
        }
        const Node& film = world.node("film");
        EXPECT_FALSE(film.hidden);
        double top = -1, bottom = 1;
        for (const Geometry::Vertex& vertex : film.geometry->vertices) {
            const glm::dvec3 at(vertex.position);
            if (std::abs(at.x) > 10) continue;
            EXPECT_LT(at.y - Terrain::height(at.x, at.z), 0.03) << "a ripple on the sand lies above it";
            top = std::max(top, at.y);
            bottom = std::min(bottom, at.y);
        }
        EXPECT_GT(top, highest);
        EXPECT_LT(bottom, lowest);
    }
    world.scene.floodStart = world.scene.time;
    world.step(1.6);
    EXPECT_TRUE(world.node("film").hidden);
}

}  // namespace
}  // namespace gull
