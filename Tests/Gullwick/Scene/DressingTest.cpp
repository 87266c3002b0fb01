#include "Gullwick/Scene/Dressing.h"

#include "Gullwick/Scene/SceneTestSupport.h"
#include "Gullwick/Scene/Terrain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <map>

namespace gull {
namespace {

std::unique_ptr<Node> dressed(int beach) {
    static Textures textures;
    return Dressing::build(beach, BeachLook::forBeach(beach), textures);
}

std::size_t count(const Node& root, std::string_view name) {
    return nodesNamed(root, name).size();
}

void expectAt(const Node& node, double x, double z) {
    EXPECT_NEAR(node.position.x, x, 1e-8);
    EXPECT_NEAR(node.position.z, z, 1e-8);
}

/// The angle about the vertical of a node laid on the sand.
double yawOf(const Node& node) {
    const glm::dvec3 right = glm::dvec3(node.worldTransform()[0]);
    return std::atan2(-right.z, right.x);
}

void expectYaw(const Node& node, double yaw) {
    EXPECT_NEAR(std::remainder(yawOf(node) - yaw, 2 * std::acos(-1.0)), 0, 0.02)
        << "the slope tilts it a little";
}

TEST(Dressing, drawsItsPropsInOrder) {
    const auto first = dressed(1);
    auto shells = nodesNamed(*first, "shell");
    ASSERT_EQ(shells.size(), 26u);
    expectAt(*shells.front(), -8.518018803, 6.369455252);
    EXPECT_NEAR(shells.front()->scale.x, 0.060750947, 1e-8);
    expectYaw(*shells.front(), 5.071804146);
    expectAt(*shells.back(), 14.656881471, 2.075147402);
    expectYaw(*shells.back(), 0.314432764);
    auto pebbles = nodesNamed(*first, "pebble");
    ASSERT_EQ(pebbles.size(), 14u);
    expectAt(*pebbles.front(), -10.492788286, 9.579988063);
    expectAt(*pebbles.back(), -18.906259381, -2.469737481);
    EXPECT_NEAR(pebbles.back()->scale.x, 1.2 * 0.070700991, 1e-8);

    const auto second = dressed(2);
    shells = nodesNamed(*second, "shell");
    ASSERT_EQ(shells.size(), 70u);
    expectAt(*shells.back(), -0.978113156, -6.331912108);
    const auto stars = nodesNamed(*second, "starfish");
    ASSERT_EQ(stars.size(), 7u);
    expectAt(*stars[0], -10.793528811, -5.818888463);
    expectAt(*stars[3], 8.156360405, -5.838565803);
    expectAt(*stars[4], -14.607626649, 7.666129209);
    expectAt(*stars[6], -8.193862607, 7.194315258);
    expectYaw(*stars[6], 1.229578421);

    const auto seventh = dressed(7);
    const auto weed = nodesNamed(*seventh, "seaweed");
    ASSERT_EQ(weed.size(), 26u);
    expectAt(*weed.front(), -8.714548616, 3.285200233);
    expectYaw(*weed.front(), 0.766432302);
    expectAt(*weed.back(), 0.207424324, 4.156122477);
    EXPECT_NEAR(weed.back()->children().front()->scale.x, 0.962123086, 1e-8);
}

TEST(Dressing, givesEachBeachItsOwnProps) {
    using Props = std::map<std::string, std::size_t>;
    const auto propsOf = [](int beach) {
        const auto root = dressed(beach);
        Props props;
        for (const char* name : {"rope", "bucket", "rock", "starfish", "pier", "rowboat", "lighthouse",
                                 "wreck", "seaweed", "driftwood", "palm"}) {
            if (const std::size_t n = count(*root, name)) props[name] = n;
        }
        return props;
    };
    const Props common{{"rope", 1}, {"bucket", 1}, {"driftwood", 1}};
    const auto with = [&](Props more) {
        more.insert(common.begin(), common.end());
        return more;
    };
    EXPECT_EQ(propsOf(1), with({{"rock", 3}}));
    EXPECT_EQ(propsOf(2), with({{"starfish", 7}}));
    EXPECT_EQ(propsOf(3), with({{"pier", 1}}));
    EXPECT_EQ(propsOf(4), with({{"rock", 4}, {"rowboat", 1}}));
    EXPECT_EQ(propsOf(5), with({{"lighthouse", 1}, {"rock", 1}}));
    EXPECT_EQ(propsOf(6), with({{"wreck", 1}}));
    EXPECT_EQ(propsOf(7), with({{"seaweed", 26}, {"driftwood", 2}}));
    EXPECT_EQ(propsOf(8), (Props{{"rope", 1}, {"rowboat", 1}, {"palm", 2}}));
    for (const int other : {0, 9, 1000000}) EXPECT_EQ(propsOf(other), with({{"rowboat", 1}, {"palm", 2}}));
    EXPECT_DEATH(dressed(-1), "beach -1");
}

TEST(Dressing, isTheSameAtEveryVisit) {
    for (const int beach : {1, 2, 7, 8}) {
        const auto one = dressed(beach), other = dressed(beach);
        std::vector<glm::dmat4> ones, others;
        forEachNode(*one, [&](const Node& node) { ones.push_back(node.worldTransform()); });
        forEachNode(*other, [&](const Node& node) { others.push_back(node.worldTransform()); });
        EXPECT_EQ(ones, others);
    }
}

TEST(Dressing, nothingFloats) {
    // The lowest point of every prop is in the sand below it, or on the sea floor.
    for (int beach = 1; beach <= 8; ++beach) {
        const auto root = dressed(beach);
        for (const auto& prop : root->children()) {
            double clearance = 1e9;
            forEachNode(*prop, [&](const Node& node) {
                if (!node.geometry) return;
                const glm::dmat4 world = node.worldTransform();
                for (const auto& vertex : node.geometry->vertices) {
                    const glm::dvec3 p(world * glm::dvec4(vertex.position, 1));
                    clearance = std::min(clearance, p.y - Terrain::height(p.x, p.z));
                }
            });
            EXPECT_LT(clearance, 0.02) << prop->name << " of beach " << beach;
        }
    }
}

TEST(Dressing, bucketAndSpadeStandClearOfTheBoat) {
    const auto root = dressed(4);
    const Node& boat = *nodesNamed(*root, "rowboat").front();
    const glm::dmat4 inBoat = glm::inverse(boat.worldTransform());
    for (const char* name : {"bucket", "spade"}) {
        forEachNode(*nodesNamed(*root, name).front(), [&](const Node& node) {
            if (!node.geometry) return;
            for (const auto& vertex : node.geometry->vertices) {
                const glm::dvec3 p(inBoat * node.worldTransform() * glm::dvec4(vertex.position, 1));
                EXPECT_GT(std::pow(p.x / 2.1, 2) + std::pow(p.z / 0.8, 2), 1) << name;
            }
        });
    }
}

TEST(Dressing, ropeStandsAroundThePlotAndSagsWithoutTouchingTheSand) {
    const auto root = dressed(1);
    const auto stakes = nodesNamed(*root, "stake");
    ASSERT_EQ(stakes.size(), 4u);
    for (const Node* stake : stakes) {
        EXPECT_NEAR(std::abs(stake->position.x), 8.35, 1e-9);
        EXPECT_NEAR(std::abs(stake->position.z), 5.35, 1e-9);
    }
    for (const Node* line : nodesNamed(*root, "line")) {
        double lowest = 1e9, highest = 0;
        for (const auto& vertex : line->geometry->vertices) {
            const double above = vertex.position.y - Terrain::height(vertex.position.x, vertex.position.z);
            lowest = std::min(lowest, above);
            highest = std::max(highest, above);
        }
        EXPECT_GT(lowest, 0.1);
        EXPECT_LT(lowest, 0.4);
        EXPECT_GT(highest, 0.55);
    }
}

TEST(Dressing, cylinderSpansItsTwoPoints) {
    const glm::dvec3 from(1, 2, 3), to(-2, 4, 3.5);
    const auto node = Dressing::cylinder(from, to, 0.1, std::make_shared<Material>());
    const double half = glm::distance(from, to) / 2;
    const glm::dmat4 world = node->worldTransform();
    EXPECT_LT(glm::distance(glm::dvec3(world * glm::dvec4(0, half, 0, 1)), to), 1e-9);
    EXPECT_LT(glm::distance(glm::dvec3(world * glm::dvec4(0, -half, 0, 1)), from), 1e-9);
    EXPECT_NEAR(node->geometry->bounds().size().y, 2 * half, 1e-6);
}

}  // namespace
}  // namespace gull
