#include "Gullwick/Scene/Digs.h"

#include "Gullwick/Scene/SceneTestSupport.h"
#include "Gullwick/Scene/Terrain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace gull {
namespace {

constexpr double pi = std::numbers::pi;

TEST(Digs, leaveAHoleInTheKeptLayerAndClearTheSprayAway) {
    SceneOnClock world;
    BeachScene& scene = world.scene;
    const std::uint64_t before = scene.stage().stillSerial();
    scene.dig({0.25, 0.5}, Hunt::Nothing{});
    const glm::dvec3 ground = Terrain::world({0.25, 0.5});
    const auto changes = scene.stage().stillChangesSince(before);
    ASSERT_TRUE(changes);
    ASSERT_FALSE(changes->empty());
    EXPECT_LT(changes->front().box.min.x, ground.x - 0.4);
    EXPECT_GT(changes->front().box.max.x, ground.x + 0.8);
    EXPECT_LT(changes->front().box.size().x, 3);
    EXPECT_EQ(layerOf(world.node("rim")), Layer::still);
    EXPECT_EQ(layerOf(world.node("heap")), Layer::still);
    EXPECT_EQ(layerOf(world.node("spray")), Layer::moving);
    EXPECT_TRUE(scene.trail.dirty());
    EXPECT_TRUE(scene.reveals().empty());

    world.step(1.4);
    EXPECT_NE(scene.stage().root.find("spray"), nullptr);
    world.step(0.11);
    EXPECT_EQ(scene.stage().root.find("spray"), nullptr);
    EXPECT_NE(scene.stage().root.find("rim"), nullptr);

    // The beach may go before its spray does.
    scene.dig({0.75, 0.5}, Hunt::Nothing{});
    scene.setBeach(3);
    EXPECT_EQ(scene.stage().root.find("rim"), nullptr);
    world.step(2);
}

TEST(Digs, treasureRisesTurnsAndFliesOff) {
    SceneOnClock world;
    BeachScene& scene = world.scene;
    const glm::dvec3 ground = Terrain::world({0.6, 0.4});
    scene.dig({0.6, 0.4}, treasure(ItemKind::ring));
    world.step(0);
    Node& ring = world.node("ring");
    const Node& glow = *scene.reveals().front().glow;
    EXPECT_EQ(layerOf(ring), Layer::moving);
    expectNear(ring.position, ground - glm::dvec3(0, 0.3, 0));
    EXPECT_NEAR(ring.scale.x, 1.45 * 0.4, 1e-12);
    EXPECT_EQ(glow.light->intensity, 0);

    world.step(0.42);
    expectNear(ring.position, ground + glm::dvec3(0, 1.7 + 0.06 * std::sin(1.68), 0), 1e-6);
    EXPECT_NEAR(ring.scale.x, 1.45, 1e-6);
    EXPECT_NEAR(ring.eulerAngles.y, 2.6 * 0.42, 1e-6);
    EXPECT_NEAR(glow.light->intensity, 140, 1e-4);
    expectNear(glow.position - ring.position, {0, 0.3, 0.4});
    std::vector<Particle> sparkles;
    particlesAt(*ring.particles.front(), scene.stage().time, sparkles);
    EXPECT_NEAR(static_cast<double>(sparkles.size()), 15, 1);

    world.step(1.28);  // half way from holding still to gone
    const glm::dvec3 held = ground + glm::dvec3(0, 1.7 + 0.06 * std::sin(6.8), 0);
    const glm::dvec3 away(0, Terrain::height(0, 6) + 0.4, 6.5);
    expectNear(ring.position, held + (away - held) * 0.875, 1e-6);
    EXPECT_NEAR(ring.scale.x, 1.45 * 0.125, 1e-6);
    EXPECT_NEAR(glow.light->intensity, 140 * (1 - 0.25 / 0.4), 1e-4);
    EXPECT_FALSE(scene.reveals().front().done);

    world.step(0.26);
    EXPECT_TRUE(scene.reveals().front().done);
    EXPECT_EQ(scene.stage().root.find("ring"), nullptr);
    EXPECT_TRUE(std::none_of(scene.reveals().begin(), scene.reveals().end(),
                             [](const Reveal& reveal) { return reveal.node || reveal.glow; }));
}

TEST(Digs, theChestOpensItsLid) {
    SceneOnClock world;
    BeachScene& scene = world.scene;
    scene.dig({0.5, 0.5}, treasure(ItemKind::chest));
    world.step(0.7);
    const Node& lid = world.node("lid");
    EXPECT_NEAR(lid.eulerAngles.x, 0, 1e-9);
    world.step(0.3);
    EXPECT_NEAR(lid.eulerAngles.x, -1.9 * 0.875, 1e-6);
    world.step(0.5);
    EXPECT_NEAR(lid.eulerAngles.x, -1.9, 1e-9);
    EXPECT_NEAR(world.node("chest").eulerAngles.y, 0.35 * std::sin(2.25), 1e-6);
    EXPECT_NEAR(world.node("chest").eulerAngles.x, 0.25, 1e-9);
    EXPECT_NEAR(scene.reveals().front().glow->light->intensity, 2.2 * 140, 1e-9);
    world.step(1.79);
    EXPECT_FALSE(scene.reveals().front().done);
    world.step(0.02);
    EXPECT_TRUE(scene.reveals().front().done);
}

TEST(Digs, junkIsTossedAsideAndComesToRestInTheKeptLayer) {
    SceneOnClock world;
    BeachScene& scene = world.scene;
    scene.dig({0, 0.5}, junk(ItemKind::can));  // at the very edge of the plot
    const glm::dvec3 ground = Terrain::world({0, 0.5});
    world.step(0.32);
    Node& can = world.node("can");
    expectNear(can.position, ground + glm::dvec3(0, 0.7, 0), 1e-6);
    expectNear(can.eulerAngles, {9 * 0.32, 5.4 * 0.32, 0}, 1e-6);
    EXPECT_EQ(scene.reveals().front().glow, nullptr);
    world.step(0.51);
    const double restX = ground.x - 0.75, restZ = ground.z + 0.25;
    expectNear(can.position, {restX, Terrain::height(restX, restZ) + 0.1, restZ}, 1e-6);
    expectNear(can.eulerAngles, {pi / 2, 0.8, 0.2}, 1e-9);
    EXPECT_EQ(layerOf(can), Layer::moving);

    const std::uint64_t before = scene.stage().stillSerial();
    world.step(0.08);
    EXPECT_TRUE(scene.reveals().front().done);
    EXPECT_EQ(layerOf(can), Layer::still);
    const auto changes = scene.stage().stillChangesSince(before);
    ASSERT_TRUE(changes);
    ASSERT_EQ(changes->size(), 1u);
    EXPECT_LT(changes->front().box.min.x, restX);
    EXPECT_GT(changes->front().box.max.x, restX);
    const auto moving = [&] {
        std::size_t shown = 0;
        for (const auto& node : can.parent()->children())
            if (node->layer == Layer::moving && node->position == can.position) ++shown;
        return shown;
    };
    EXPECT_EQ(moving(), 1u) << "seen until the kept layer shows it";
    world.step(0.31);
    EXPECT_EQ(moving(), 0u);
    scene.setBeach(1);
    EXPECT_TRUE(scene.reveals().empty());
    EXPECT_EQ(scene.stage().root.find("can"), nullptr);
}

}  // namespace
}  // namespace gull
