// What the player sees of a game: the stage after frames, digs and pings.

#include "Gullwick/Game/GameHarness.h"
#include "Gullwick/Scene/SceneTestSupport.h"
#include "Gullwick/Scene/Sea.h"
#include "Gullwick/Scene/Terrain.h"

#include <cmath>

namespace gull {
namespace {

using Phase = GameController::Phase;
constexpr double frameTime = GameController::frameInterval;

struct StageOfPlay : GameHarness {
    Node& node(const char* name) { return *game.world().stage().root.find(name); }
    std::vector<const Node*> rings() {
        auto all = nodesNamed(game.world().stage().root, "ripple");
        std::erase_if(all, [](const Node* ring) { return ring->hidden; });
        return all;
    }
    double lift() {
        const double hover = 0.32;
        return node("detector").position.y - Terrain::world(game.coil()).y - hover;
    }
};

TEST_F(StageOfPlay, theRigGoesWhereTheFingerPoints) {
    play(1);
    for (const Phase phase : {Phase::playing, Phase::intro}) {
        if (phase == Phase::intro) game.beginBeach(1, true);
        for (const PlotPoint& place : {PlotPoint{0.9, 0.8}, PlotPoint{0.1, 0.2}}) {
            game.fingerMoved(0.05 + 0.9 * place.x, 0.05 + 0.9 * place.y);
            turn(frameTime * 1.5);
            const double side = place.x - game.coil().x;
            // It leans into the motion: back to the left and the sea on its way right and away, and so on.
            const glm::dvec2 slope = Terrain::slope(node("detector").position.x, node("detector").position.z);
            EXPECT_LT((node("tilt").eulerAngles.z - std::atan(slope.x)) * side, 0);
            EXPECT_LT((node("tilt").eulerAngles.x + std::atan(slope.y)) * side, 0);
            turn(0.5);
            const glm::dvec3 ground = Terrain::world(place);
            EXPECT_NEAR(node("detector").position.x, ground.x, 0.01);
            EXPECT_NEAR(node("detector").position.z, ground.z, 0.01);
            EXPECT_NEAR(lift(), 0, 1e-9);
        }
    }
}

TEST_F(StageOfPlay, aPingShowsAnArrowFromTheCoilToTheNearestTreasure) {
    play(1);
    game.setCoil({0.5, 0.5});
    turn(0.05);
    EXPECT_TRUE(node("ping").hidden);
    const auto nearest = std::ranges::min(
        buried(true), {}, [&](const BuriedItem& item) { return item.at.distance(game.coil()); });
    game.ping();
    turn(0.05);
    ASSERT_FALSE(node("ping").hidden);
    const glm::dvec3 from = Terrain::world(game.coil()), way = Terrain::world(nearest.at) - from;
    expectNear(node("ping").position, from + glm::dvec3(0, 0.06, 0), 1e-6);
    const glm::dvec3 arrow = node("arrow").worldPosition() - node("ping").worldPosition();
    expectNear(glm::normalize(glm::dvec3(arrow.x, 0, arrow.z)), glm::normalize(glm::dvec3(way.x, 0, way.z)),
               1e-6);
}

TEST_F(StageOfPlay, theSeaRisesWithTheTideAndThenFloods) {
    play(1);
    game.setCoil(nowhere());
    const double hours[] = {0.2, 0.5, 0.9};
    for (const double share : hours) {
        game.debugAdvance(100 * share - game.hunt().elapsed());
        game.world().tide = 0;  // only frames move it
        turn(0.1);
        EXPECT_NEAR(game.world().tide, share, 0.002);
        EXPECT_NEAR(node("water").position.y, Sea::level(game.world().time, game.world().tide, {}), 1e-12);
    }
    EXPECT_FALSE(game.world().floodStart);
    game.debugAdvance(100);
    wait(Phase::flooding);
    const double began = game.world().time;
    turn(0.1);
    EXPECT_NEAR(game.world().floodStart.value_or(0), began, 2 * frameTime);
    EXPECT_EQ(game.world().tide, 1);
    turn(1.5);
    EXPECT_GT(node("water").position.y, 0.6);
    game.restart();
    turn(0.1);
    EXPECT_LT(node("water").position.y, 0);
}

TEST_F(StageOfPlay, everyTickSendsARingOfItsColourAndStrength) {
    play(4);  // shows kinds
    for (const bool treasure : {true, false}) {
        game.setCoil(nowhere());
        turn(1);
        ASSERT_TRUE(rings().empty());
        const BuriedItem item = buried(treasure)[0];
        game.setCoil(item.at);
        while (senses.count(treasure ? "beep" : "buzz") == 0 || rings().empty()) turn(frameTime / 4);
        ASSERT_EQ(rings().size(), 1u);
        const Node& ring = *rings()[0];
        const glm::dvec3 ground = Terrain::world(item.at);
        expectNear(ring.position, ground + glm::dvec3(0, 0.035, 0), 1e-6);
        const double strength = game.reading().strength * (treasure ? 1 : 0.8);
        const Colour tint = treasure ? Colour{1.0, 0.76, 0.28} : Colour{0.55, 0.62, 0.78};
        const double age = frameTime / 0.6;
        EXPECT_NEAR(ring.scale.x, 1.1 + 2.2 * age * (0.6 + 0.4 * strength), 1e-3);
        const double brightness = std::pow(1 - age, 1.6) * (0.25 + 0.6 * strength);
        EXPECT_NEAR(ring.materials[0]->multiply.r, tint.r * brightness, 0.01);
        EXPECT_NEAR(ring.materials[0]->multiply.b, tint.b * brightness, 0.01);
        // The rig's lamp says the same.
        const Light& lamp = *node("detector").find("lamp")->light;
        EXPECT_NEAR(lamp.intensity, 70 * game.reading().strength, 1e-9);
        EXPECT_EQ(lamp.colour, tint);
    }
    game.openSelect();
    turn(0.05);
    EXPECT_EQ(node("detector").find("lamp")->light->intensity, 0);
}

TEST_F(StageOfPlay, aDigNodsTheRigAndMovesTheSand) {
    play(2);
    game.setCoil(nowhere());
    turn(0.1);
    EXPECT_NEAR(lift(), 0, 1e-9);
    const auto marks = game.world().trail.texture()->version();
    game.dig();
    EXPECT_NEAR(game.world().shake, 0.4, 1e-9);
    turn(0.3);
    EXPECT_NEAR(lift(), 0.7, 0.01);
    EXPECT_GT(game.world().trail.texture()->version(), marks) << "the hole's edge";
    turn(0.32);
    EXPECT_NEAR(lift(), 0, 1e-9);
    EXPECT_TRUE(game.world().reveals().empty());
    digUp(buried(true)[0]);
    digUp(buried(false)[0]);
    EXPECT_EQ(game.world().reveals().size(), 2u);
}

}  // namespace
}  // namespace gull
