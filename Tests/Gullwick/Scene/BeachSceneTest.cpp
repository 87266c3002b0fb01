#include "Gullwick/Scene/BeachScene.h"

#include "Gullwick/Scene/DetectorRig.h"
#include "Gullwick/Scene/RipplePool.h"
#include "Gullwick/Scene/SceneCamera.h"
#include "Gullwick/Scene/SceneLights.h"
#include "Gullwick/Scene/SceneTestSupport.h"
#include "Gullwick/Scene/Sea.h"
#include "Gullwick/Scene/Terrain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>

namespace gull {
namespace {

constexpr double pi = std::numbers::pi;

TEST(SceneCamera, keepsThePlotInViewAtEveryShapeOfWindow) {
    SceneOnClock world;
    struct Case {
        double aspect;
        glm::dvec3 camera;
    };
    for (const Case& c :
         {Case{0.2, {0, 40.730624648, 69.790624386}}, Case{0.3, {0, 40.730624648, 69.790624386}},
          Case{0.8, {0, 15.920483999, 26.517123254}}, Case{1.55, {0, 8.4, 13.4}}, Case{2, {0, 8.4, 13.4}},
          Case{3.5, {0, 8.4, 13.4}}}) {
        world.scene.frame(c.aspect);
        const Node& camera = *world.scene.stage().pointOfView;
        expectNear(camera.position, c.camera, 1e-7);
        if (c.aspect < 0.3) continue;
        const glm::dvec2 size(800 * c.aspect, 800);
        for (const PlotPoint corner : {PlotPoint{0, 1}, PlotPoint{1, 1}, PlotPoint{0.5, 0}}) {
            const glm::dvec3 p =
                project(*camera.camera, camera.worldTransform(), Terrain::world(corner), size);
            EXPECT_GT(p.x, 0);
            EXPECT_LT(p.x, size.x);
            EXPECT_GT(p.y, 0);
            EXPECT_LT(p.y, size.y);
        }
    }
}

TEST(SceneCamera, fliesInAndComesToRest) {
    SceneOnClock world;
    BeachScene& scene = world.scene;
    const Node& camera = *scene.stage().pointOfView;
    EXPECT_FALSE(scene.stage().restingView) << "no fly-in yet";
    scene.introStart = scene.time;
    world.step(0);
    expectNear(camera.position, {0, 15.27, 20.15});
    world.step(0.7);
    expectNear(camera.position, {0, 9.25875, 14.24375}, 1e-6);
    ASSERT_TRUE(scene.stage().restingView);
    expectNear(glm::dvec3((*scene.stage().restingView)[3]), {0, 8.4, 13.4});
    // Always at the look point.
    expectNear(-glm::dvec3(camera.worldTransform()[2]),
               glm::normalize(glm::dvec3(0, -0.2, -1.6) - camera.position));
    world.step(0.71);
    expectNear(camera.position, {0, 8.4, 13.4});
    EXPECT_FALSE(scene.stage().restingView);
}

TEST(SceneCamera, shakesAtADigUnlessMotionIsReduced) {
    SceneOnClock world;
    BeachScene& scene = world.scene;
    scene.dig({0.5, 0.5}, Hunt::Nothing{});
    EXPECT_EQ(scene.shake, 0.4);
    scene.dig({0.2, 0.5}, treasure(ItemKind::coin));
    EXPECT_EQ(scene.shake, 1);
    scene.dig({0.8, 0.5}, Hunt::Nothing{});
    EXPECT_EQ(scene.shake, 1) << "a smaller shake does not calm a bigger one";
    world.step(0.05);
    EXPECT_NEAR(scene.shake, std::exp(-0.45), 1e-12);
    const double swing = std::sin(60 * scene.time) * scene.shake;
    expectNear(scene.stage().pointOfView->position,
               glm::dvec3(0, 8.4, 13.4) + glm::dvec3(0.04, 0.06, 0.06) * swing);
    EXPECT_TRUE(scene.stage().restingView);

    scene.reduceMotion = true;
    scene.introStart = scene.time;
    world.step(0.01);
    expectNear(scene.stage().pointOfView->position, {0, 8.4, 13.4});
}

TEST(SceneCamera, readsThreeNumbersFromTheEnvironment) {
    EXPECT_EQ(SceneCamera::parseTriple("1,2,3"), glm::dvec3(1, 2, 3));
    EXPECT_EQ(SceneCamera::parseTriple("1,x,2,,3"), glm::dvec3(1, 2, 3));
    EXPECT_EQ(SceneCamera::parseTriple("-1e1,.5,7,"), glm::dvec3(-10, 0.5, 7));
    for (const char* bad : {"", "1,2", "1,2,3,4", "1;2;3", "nan,1,2", "1, 2,3", "1,2,3x", "1e308,2,3"}) {
        EXPECT_FALSE(SceneCamera::parseTriple(bad)) << bad;
    }
    EXPECT_FALSE(SceneCamera::parseTriple(nullptr));
    EXPECT_EQ(SceneCamera::parseAngle("179.5"), 179.5);
    for (const char* bad : {"", "0", "-40", "180", "nan", "40x"})
        EXPECT_FALSE(SceneCamera::parseAngle(bad)) << bad << ": no lens sees that";
}

TEST(SceneLights, sunStandsWhereTheBeachSaysButNeverTooLow) {
    expectNear(SceneLights::sunDirection(BeachLook::forBeach(1)), {-0.510406495, 0.559192903, -0.653290522},
               1e-8);
    expectNear(SceneLights::sunDirection(BeachLook::forBeach(6)), {-0.220523005, 0.411197484, -0.884469464},
               1e-8);
    expectNear(SceneLights::sunDirection(BeachLook::forBeach(7)), {0, 0.669130606, -0.743144825}, 1e-8);
    expectNear(SceneLights::sunDirection(BeachLook::forBeach(8)), {-0.584937641, 0.414605119, -0.697101536},
               1e-8);

    SceneOnClock world;
    for (int beach = 1; beach <= 8; ++beach) {
        world.scene.setBeach(beach);
        const BeachLook& look = BeachLook::forBeach(beach);
        const Node& sun = world.node("sun");
        expectNear(glm::dvec3(sun.worldTransform()[2]), SceneLights::sunDirection(look));
        EXPECT_NEAR(sun.light->intensity, look.sunIntensity * 0.62, 1e-9);
        EXPECT_NEAR(world.scene.stage().pointOfView->camera->exposureOffset, look.exposure - 0.2, 1e-12);
        EXPECT_EQ(world.node("ambient").light->intensity, beach == 5 || beach == 6 || beach == 8 ? 170 : 110);
    }
    const Stage::Fog& fog = world.scene.stage().fog;
    EXPECT_NEAR(fog.colour.r, 1 + (0.9 - 1) * 0.25, 1e-12);
    EXPECT_EQ(fog.start, 26);
    EXPECT_EQ(fog.end, 120);
}

TEST(Sea, risesWithTideAndFlood) {
    EXPECT_NEAR(Sea::level(0, 0, {}), -0.21, 1e-12);
    EXPECT_NEAR(Sea::level(3.1, 0.5, {}), -0.084072973273, 1e-11);
    EXPECT_NEAR(Sea::level(10, 1, 10), 0.009482974262, 1e-11) << "the flood begins without a jump";
    EXPECT_NEAR(Sea::level(10.8, 1, 10), 0.675017829644, 1e-11);
    EXPECT_NEAR(Sea::level(12, 1, 10), 0.814559645344, 1e-11);
    EXPECT_NEAR(Sea::level(9, 1, 10), Sea::level(9, 1, {}), 1e-12);
}

TEST(Sea, foamAndBreakersFollowTheWater) {
    SceneOnClock world;
    world.scene.tide = 0.6;
    for (const double dt : {0.4, 2.7, 1.3}) {
        world.step(dt);
        const double level = Sea::level(world.scene.time, 0.6, {});
        const double shore = Terrain::shoreZ(level);
        EXPECT_NEAR(world.node("water").position.y, level, 1e-12);
        expectNear(world.node("foam").position, {0, level + 0.012, shore - 0.5});
        const auto breakers = nodesNamed(world.scene.stage().root, "breaker");
        ASSERT_EQ(breakers.size(), 3u);
        for (std::size_t i = 0; i < 3; ++i) {
            double whole = 0;
            const double p = std::modf(world.scene.time / 7.5 + static_cast<double>(i) / 3, &whole);
            expectNear(breakers[i]->position, {0, level + 0.008, shore - 15 + 14.2 * p});
            EXPECT_NEAR(breakers[i]->materials[0]->opacity, 0.3 * std::pow(std::sin(pi * p), 2), 1e-9);
            EXPECT_EQ(layerOf(*breakers[i]), Layer::water);
        }
    }
    EXPECT_TRUE(world.node("water").materials[0]->smooth);
}

TEST(DetectorRig, leansWithTheMotionAndHugsTheSand) {
    SceneOnClock world;
    world.coil = {0.3, 0.8};
    const glm::dvec3 ground = Terrain::world(world.coil);
    BeachScene& scene = world.scene;
    for (int i = 0; i < 200; ++i)
        scene.update(scene.time, 0.05, world.coil, {100, -100}, 0.7, 0, {1, 1, 1, 1});
    expectNear(world.node("detector").position, {ground.x, ground.y + 0.7 + 0.32, ground.z});
    const glm::dvec2 slope = Terrain::slope(ground.x, ground.z);
    const glm::dvec3 lean = world.node("tilt").eulerAngles;
    expectNear(lean, {-std::atan(slope.y) - 0.25, 0, std::atan(slope.x) - 0.25}, 1e-6);
    EXPECT_NEAR(world.node("detector").find("glow")->worldPosition().y, ground.y + 0.03, 1e-12)
        << "the glow stays on the sand";

    // At rest the coil lies in the plane of the sand.
    for (int i = 0; i < 200; ++i) scene.update(scene.time, 0.05, world.coil, {0, 0}, 0, 0, {1, 1, 1, 1});
    const glm::dvec3 up = glm::dvec3(world.node("tilt").worldTransform()[1]);
    EXPECT_GT(glm::dot(up, glm::normalize(glm::dvec3(-slope.x, 1, -slope.y))), 0.99999);

    // The shaft's far end is over the line from the coil to the hand.
    const glm::dvec3 shaft = glm::dvec3(world.node("yaw").worldTransform()[2]);
    expectNear(glm::normalize(glm::dvec3(shaft.x, 0, shaft.z)),
               glm::normalize(glm::dvec3(6 - ground.x, 0, 15 - ground.z)));
}

TEST(DetectorRig, showsTheSignal) {
    SceneOnClock world;
    const Node* lamp = world.node("detector").find("lamp");
    EXPECT_EQ(lamp->light->intensity, 0);
    world.scene.update(1, 0.01, {0.5, 0.5}, {0, 0}, 0, 3, {1, 0.5, 0, 1});
    EXPECT_EQ(lamp->light->intensity, 70) << "a signal counts for 1 at most";
    EXPECT_EQ(lamp->light->colour, (Colour{1, 0.5, 0, 1}));
    const Node* glow = world.node("detector").find("glow");
    EXPECT_NEAR(glow->materials[0]->multiply.r, 0.12, 1e-12);
    EXPECT_EQ(layerOf(*glow), Layer::moving);
}

TEST(Ripples, areRecycledInTurnAndLieOnTheSlope) {
    SceneOnClock world;
    const auto rings = nodesNamed(world.scene.stage().root, "ripple");
    ASSERT_EQ(rings.size(), RipplePool::count);
    const auto shown = [&] {
        return std::count_if(rings.begin(), rings.end(), [](const Node* ring) { return !ring->hidden; });
    };
    EXPECT_EQ(shown(), 0);
    for (int i = 0; i < 18; ++i) world.scene.ripple({0.05 * i, 0.5}, {1, 1, 1, 1}, 0.5);
    EXPECT_EQ(shown(), 18);
    world.step(0.3);
    world.scene.ripple({0.5, 0.9}, {0.5, 1, 0, 1}, 1);
    const glm::dvec3 ground = Terrain::world({0.5, 0.9});
    expectNear(rings[0]->position, ground + glm::dvec3(0, 0.035, 0));
    const glm::dvec3 up = glm::dvec3(rings[0]->localTransform()[2]);
    const glm::dvec2 slope = Terrain::slope(ground.x, ground.z);
    EXPECT_GT(glm::dot(up / glm::length(up), glm::normalize(glm::dvec3(-slope.x, 1, -slope.y))), 0.99999);

    world.step(0.15);  // a quarter of the nineteenth's way, the others three quarters
    EXPECT_NEAR(rings[0]->scale.x, 1.1 + 2.2 * 0.25, 1e-9);
    EXPECT_NEAR(rings[0]->materials[0]->multiply.r, 0.5 * std::pow(0.75, 1.6) * 0.85, 1e-9);
    EXPECT_NEAR(rings[1]->scale.x, 1.1 + 2.2 * 0.75 * 0.8, 1e-9);
    world.step(0.16);
    EXPECT_EQ(shown(), 1);
    world.step(0.3);
    EXPECT_EQ(shown(), 0);
}

TEST(Ping, pointsToTheTreasureAndFades) {
    SceneOnClock world;
    EXPECT_TRUE(world.node("ping").hidden);
    const PlotPoint from{0.2, 0.3}, to{0.9, 0.6};
    world.scene.showPing(from, to);
    const Node& ping = world.node("ping");
    const Node& arrow = world.node("arrow");
    const glm::dvec3 a = Terrain::world(from), b = Terrain::world(to);
    expectNear(ping.position, a + glm::dvec3(0, 0.06, 0));
    world.step(0.1);
    EXPECT_FALSE(ping.hidden);
    const glm::dvec3 offset = arrow.worldPosition() - ping.worldPosition();
    expectNear(glm::normalize(glm::dvec3(offset.x, 0, offset.z)),
               glm::normalize(glm::dvec3(b.x - a.x, 0, b.z - a.z)));
    EXPECT_NEAR(arrow.materials[0]->multiply.g, 0.5 * (0.7 + 0.3 * std::sin(1.2)), 1e-9);
    world.step(1.9);
    EXPECT_NEAR(arrow.materials[0]->multiply.g, 0.5 * (0.7 + 0.3 * std::sin(24.0)), 1e-9);
    EXPECT_NEAR(arrow.position.z, -2.1 - 0.4 * std::abs(std::sin(10.0)), 1e-9);
    world.step(0.41);
    EXPECT_TRUE(ping.hidden);
    world.scene.showPing(from, to);
    world.scene.setBeach(2);
    EXPECT_TRUE(ping.hidden);
}

TEST(BeachScene, showsTheTrailAtMostTwentyTimesASecondAndOnlyWhereItChanged) {
    SceneOnClock world;
    BeachScene& scene = world.scene;
    world.step(0.06);
    const std::uint64_t before = scene.stage().stillSerial();
    const std::uint64_t version = scene.trail.texture()->version();
    scene.trail.sweep({0.5, 0.5});
    world.step(0.01);
    EXPECT_FALSE(scene.trail.dirty());
    auto changes = scene.stage().stillChangesSince(before);
    ASSERT_TRUE(changes);
    ASSERT_EQ(changes->size(), 1u);
    EXPECT_TRUE(changes->front().box.min.x < -0.5 && changes->front().box.max.x > 0.5);
    EXPECT_LT(changes->front().box.size().x, 2);
    EXPECT_TRUE(changes->front().box.min.z < -0.5 && changes->front().box.max.z > 0.5);
    EXPECT_GT(scene.trail.texture()->version(), version);

    scene.trail.sweep({0.1, 0.95});
    world.step(0.03);
    EXPECT_TRUE(scene.trail.dirty()) << "too soon";
    world.step(0.03);
    EXPECT_FALSE(scene.trail.dirty());
    changes = scene.stage().stillChangesSince(before);
    ASSERT_EQ(changes->size(), 2u);
    EXPECT_LT(changes->back().box.max.x, -5) << "left";
    EXPECT_LT(changes->back().box.max.z, -3) << "toward the sea";
    const PixelRect far = scene.trail.texture()->changedSince(scene.trail.texture()->version() - 1);
    EXPECT_LT(far.y, 20) << "which is the picture's top";
}

TEST(BeachScene, findsThePlotPointUnderAPointOfTheView) {
    SceneOnClock world;
    BeachScene& scene = world.scene;
    for (const double aspect : {0.5, 1.55, 2.4}) {
        scene.frame(aspect);
        const glm::dvec2 size(900 * aspect, 900);
        const Node& camera = *scene.stage().pointOfView;
        for (const PlotPoint at : {PlotPoint{0.5, 0.5}, PlotPoint{0.05, 0.97}, PlotPoint{0.93, 0.02}}) {
            const glm::dvec3 seen =
                project(*camera.camera, camera.worldTransform(), Terrain::world(at), size);
            const PlotPoint found = scene.plotPoint({seen.x, seen.y}, size);
            EXPECT_NEAR(found.x, at.x, 1e-3);
            EXPECT_NEAR(found.y, at.y, 1e-3);
        }
        for (const glm::dvec2 anywhere : {glm::dvec2(0, 0), glm::dvec2(-5000, -4000), glm::dvec2(1e5, 20)}) {
            const PlotPoint found = scene.plotPoint(anywhere, size);
            EXPECT_EQ(found, found.clamped());
        }
    }
}

TEST(BeachScene, opensABeachAfresh) {
    SceneOnClock world;
    BeachScene& scene = world.scene;
    scene.tide = 0.7;
    scene.floodStart = scene.time;
    scene.ripple({0.5, 0.5}, {1, 1, 1, 1}, 1);
    scene.trail.sweep({0.5, 0.5});
    const std::uint64_t before = scene.stage().stillSerial();
    scene.setBeach(4);
    EXPECT_EQ(scene.beachNumber(), 4);
    EXPECT_EQ(scene.look(), BeachLook::forBeach(4));
    EXPECT_EQ(scene.tide, 0);
    EXPECT_FALSE(scene.floodStart);
    EXPECT_FALSE(scene.trail.dirty());
    EXPECT_FALSE(scene.stage().stillChangesSince(before)) << "everything changed";
    for (const Node* ring : nodesNamed(scene.stage().root, "ripple")) EXPECT_TRUE(ring->hidden);
    EXPECT_EQ(nodesNamed(scene.stage().root, "beach").size(), 1u);
    EXPECT_EQ(nodesNamed(scene.stage().root, "sand").size(), 1u);
    EXPECT_NE(scene.stage().root.find("rowboat"), nullptr);
    EXPECT_FALSE(world.node("sand").castsShadow);

    const std::shared_ptr<const Geometry> ground = world.node("sand").geometry;
    scene.dig({0.5, 0.5}, treasure(ItemKind::coin));
    ASSERT_NE(scene.stage().root.find("rim"), nullptr);
    scene.setBeach(4);
    EXPECT_EQ(world.node("sand").geometry, ground) << "the same beach keeps its ground";
    for (const char* trace : {"rim", "heap", "spray"})
        EXPECT_EQ(scene.stage().root.find(trace), nullptr) << "but no " << trace;
    EXPECT_TRUE(scene.reveals().empty());
    EXPECT_EQ(nodesNamed(scene.stage().root, "dressing").size(), 1u);
    EXPECT_EQ(nodesNamed(scene.stage().root, "beach").size(), 1u);

    for (const int number : {0, 9, 12345}) {
        scene.setBeach(number);
        EXPECT_EQ(scene.look(), BeachLook::forBeach(8));
        EXPECT_NE(scene.stage().root.find("palm"), nullptr);
    }
    EXPECT_DEATH(scene.setBeach(-1), "beach -1");
}

TEST(BeachScene, drawsNoPictureUntilSomebodyLooks) {
    SceneOnClock world;
    world.scene.setBeach(5);
    world.scene.dig({0.5, 0.5}, treasure(ItemKind::coin));
    world.step(0.5);
    EXPECT_FALSE(world.scene.stage().background->isDrawn());
    EXPECT_FALSE(world.scene.stage().environment->isDrawn());
    forEachNode(world.scene.stage().root, [](const Node& node) {
        for (const auto& material : node.materials) {
            for (const Channel* channel : {&material->diffuseMap, &material->normalMap}) {
                if (!channel->texture) continue;
                EXPECT_FALSE(channel->texture->isDrawn()) << node.name;
            }
        }
    });
}

}  // namespace
}  // namespace gull
