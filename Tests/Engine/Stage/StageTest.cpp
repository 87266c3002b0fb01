#include "Engine/Stage/Stage.h"

#include "Engine/Stage/FiniteCheck.h"
#include "Engine/Stage/Primitives.h"

#include <gtest/gtest.h>

#include <cmath>
#include <glm/ext/matrix_transform.hpp>
#include <glm/geometric.hpp>
#include <limits>
#include <numbers>
#include <utility>

namespace gull {
namespace {

constexpr double pi = std::numbers::pi;

void expectNear(const glm::dvec3& actual, const glm::dvec3& expected, double tolerance = 1e-9) {
    EXPECT_LT(glm::distance(actual, expected), tolerance)
        << actual.x << ", " << actual.y << ", " << actual.z << " instead of " << expected.x << ", "
        << expected.y << ", " << expected.z;
}

glm::dvec3 apply(const glm::dmat4& m, const glm::dvec3& p) {
    return glm::dvec3(m * glm::dvec4(p, 1));
}

TEST(Node, turnsAboutXFirstThenYThenZ) {
    Node node;
    node.position = {10, 0, 0};
    node.scale = {2, 3, 4};
    node.eulerAngles = {pi / 2, 0, pi / 2};
    // y goes to z about x and stays there about z; x stays about x and goes to y about z.
    expectNear(apply(node.localTransform(), {0, 1, 0}), {10, 0, 3});
    expectNear(apply(node.localTransform(), {1, 0, 0}), {10, 2, 0});

    node.eulerAngles = {0.3, -1.1, 2.4};
    glm::dmat4 expected = glm::translate(glm::dmat4(1), node.position);
    expected = glm::rotate(expected, 2.4, {0, 0, 1});
    expected = glm::rotate(expected, -1.1, {0, 1, 0});
    expected = glm::rotate(expected, 0.3, {1, 0, 0});
    expected = glm::scale(expected, node.scale);
    for (const glm::dvec3 p : {glm::dvec3(1, 2, 3), glm::dvec3(-4, 0.5, 0)}) {
        expectNear(apply(node.localTransform(), p), apply(expected, p));
    }
}

TEST(Node, worldTransformNestsAndChildrenAreFoundAndRemoved) {
    Node root;
    Node& arm = root.addChild("arm");
    arm.position = {0, 5, 0};
    arm.eulerAngles.y = pi / 2;
    Node& hand = arm.addChild("hand");
    hand.position = {1, 0, 0};
    expectNear(hand.worldPosition(), {0, 5, -1});
    EXPECT_EQ(root.find("hand"), &hand);
    EXPECT_EQ(root.find("foot"), nullptr);

    const std::unique_ptr<Node> taken = arm.removeFromParent();
    EXPECT_EQ(taken.get(), &arm);
    EXPECT_EQ(arm.parent(), nullptr);
    EXPECT_TRUE(root.children().empty());
    EXPECT_EQ(root.removeFromParent(), nullptr);
}

TEST(Node, looksAlongItsNegativeZ) {
    Node node;
    node.position = {1, 2, 3};
    for (const glm::dvec3 target : {glm::dvec3(4, -2, 0), glm::dvec3(1, 9, 3), glm::dvec3(1, 2, -8)}) {
        node.lookAt(target);
        const glm::dmat4 world = node.worldTransform();
        expectNear(-glm::dvec3(world[2]), glm::normalize(target - node.position));
        EXPECT_NEAR(glm::determinant(glm::dmat3(world)), 1, 1e-9);
        EXPECT_GE(world[1].y, -1e-9);
    }
}

TEST(Node, boundsLeaveOutWhatIsHidden) {
    Node root;
    Node& box = root.add(makeNode(primitives::box(1, 1, 1), std::make_shared<Material>()));
    box.position = {3, 0, 0};
    box.eulerAngles.z = pi / 4;
    Node& far = root.add(makeNode(primitives::box(1, 1, 1), std::make_shared<Material>()));
    far.position = {100, 0, 0};
    far.hidden = true;
    const Box bounds = root.bounds();
    expectNear(bounds.min, {3 - std::sqrt(0.5), -std::sqrt(0.5), -0.5}, 1e-6);
    expectNear(bounds.max, {3 + std::sqrt(0.5), std::sqrt(0.5), 0.5}, 1e-6);
}

TEST(Camera, projectsAndUnprojects) {
    Camera camera;
    Node node;
    node.position = {0, 8.4, 13.4};
    node.lookAt({0, -0.2, -1.6});
    const glm::dmat4 world = node.worldTransform();
    const glm::dvec2 size(1240, 800);

    expectNear(project(camera, world, {0, -0.2, -1.6}, size) * glm::dvec3(1, 1, 0), {620, 400, 0}, 1e-6);
    // Half the view's height is half the field of view.
    const glm::dvec3 forward = -glm::dvec3(world[2]), up(world[1]);
    const glm::dvec3 top = node.position + (forward + up * std::tan(20 * pi / 180)) * 7.0;
    EXPECT_NEAR(project(camera, world, top, size).y, 0, 1e-6);
    EXPECT_NEAR(project(camera, world, node.position + forward * camera.zNear, size).z, 0, 1e-9);
    EXPECT_NEAR(project(camera, world, node.position + forward * camera.zFar, size).z, 1, 1e-9);

    for (const bool orthographic : {false, true}) {
        if (orthographic) camera.orthographicScale = 3;
        for (const glm::dvec3 p : {glm::dvec3(1, 0, -3), glm::dvec3(-6, 0.3, 4)}) {
            expectNear(unproject(camera, world, project(camera, world, p, size), size), p, 1e-6);
        }
    }
}

TEST(Stage, tellsWhichPartsOfTheKeptLayerChanged) {
    Stage stage;
    const std::uint64_t before = stage.stillSerial();
    const Box box{{0, 0, 0}, {1, 1, 1}};
    stage.touchStill(Box{});
    EXPECT_EQ(stage.stillSerial(), before) << "an empty box is no change";
    stage.touchStill(box);
    const std::uint64_t between = stage.stillSerial();
    stage.touchStill(box);
    ASSERT_TRUE(stage.stillChangesSince(before));
    EXPECT_EQ(stage.stillChangesSince(before)->size(), 2u);
    EXPECT_EQ(stage.stillChangesSince(between)->size(), 1u);
    EXPECT_TRUE(stage.stillChangesSince(stage.stillSerial())->empty());

    stage.touchStill();
    EXPECT_FALSE(stage.stillChangesSince(between));
    EXPECT_TRUE(stage.stillChangesSince(stage.stillSerial())->empty());

    const std::uint64_t early = stage.stillSerial();
    stage.touchPaint({{-9, 0, 0}, {-8, 0, 0}});
    for (int i = 0; i < 1000; ++i) stage.touchStill(box);
    stage.touchPaint(box);
    const auto missed = stage.stillChangesSince(early);
    ASSERT_TRUE(missed) << "however many there were";
    EXPECT_LT(missed->size(), 300u);
    EXPECT_EQ(missed->front().box.min.x, -9) << "the oldest share a box";
    EXPECT_FALSE(missed->front().onlyPaint) << "in which more than paint changed";
    EXPECT_TRUE(missed->back().onlyPaint);
    EXPECT_EQ(stage.stillChangesSince(stage.stillSerial() - 5)->size(), 5u);
}

TEST(Texture, isDrawnOnceAndOnlyWhenAsked) {
    int drawings = 0;
    const Texture texture([&] {
        ++drawings;
        return Image(4, 2);
    });
    EXPECT_FALSE(texture.isDrawn());
    EXPECT_EQ(drawings, 0);
    EXPECT_EQ(texture.image().width, 4);
    EXPECT_EQ(&texture.image(), &texture.image());
    EXPECT_EQ(drawings, 1);
    EXPECT_NE(texture.id(), Texture(Image(1, 1)).id());
}

TEST(Texture, forgetsOnlyPixelsThatCanBeDrawnAgain) {
    Texture texture([] { return Image(4, 2); });
    EXPECT_EQ(texture.image().width, 4);
    texture.forgetPixels();
    EXPECT_FALSE(texture.isDrawn());
    EXPECT_EQ(texture.version(), 1u);
    EXPECT_EQ(texture.image().width, 4);

    Image marked(4, 2);
    marked.at(3, 1)[0] = 77;
    texture.update(marked, {3, 1, 1, 1});
    texture.forgetPixels();
    EXPECT_EQ(texture.image().at(3, 1)[0], 77) << "what was changed stays";
}

TEST(Texture, updatesOnlyTheRectangleAndRemembersIt) {
    Texture texture(Image(64, 32));
    Image source(64, 32);
    for (auto& byte : source.pixels) byte = 200;
    texture.update(source, {10, 4, 5, 6});
    EXPECT_EQ(texture.image().at(10, 4)[0], 200);
    EXPECT_EQ(texture.image().at(14, 9)[3], 200);
    EXPECT_EQ(texture.image().at(15, 9)[0], 0);
    EXPECT_EQ(texture.image().at(9, 4)[0], 0);

    texture.update(source, {60, 30, 50, 50});  // cut at the edge
    PixelRect changed = texture.changedSince(1);
    EXPECT_EQ(changed.x, 10);
    EXPECT_EQ(changed.y, 4);
    EXPECT_EQ(changed.x + changed.width, 64);
    EXPECT_EQ(changed.y + changed.height, 32);
    changed = texture.changedSince(2);
    EXPECT_EQ(changed.width, 4);
    EXPECT_EQ(changed.height, 2);
    EXPECT_EQ(texture.changedSince(texture.version()).width, 0);

    const std::uint64_t early = texture.version();
    for (int i = 0; i < 200; ++i) texture.update(source, {0, 0, 1, 1});
    EXPECT_EQ(texture.changedSince(early).width, 64);
    EXPECT_EQ(texture.changedSince(texture.version() - 3).width, 1);
    EXPECT_DEATH(texture.replace(Image(63, 32)), "64 x 32 was replaced by one of 63 x 32");
}

TEST(FiniteCheck, findsWhatIsNotFiniteAndNamesTheNode) {
    Stage stage;
    Node& node = stage.root.addChild("beach").addChild("coil");
    node.materials = {std::make_shared<Material>()};
    node.light = std::make_shared<Light>();
    node.camera = std::make_shared<Camera>();
    node.particles = {std::make_shared<ParticleSystem>()};
    EXPECT_EQ(nonFiniteNumber(stage), "");
    const double none = std::nan(""), endless = std::numeric_limits<double>::infinity();
    double* const numbers[] = {&stage.time,
                               &stage.fog.end,
                               &node.position.y,
                               &node.eulerAngles.x,
                               &node.scale.z,
                               &node.opacity,
                               &node.materials[0]->multiplyMap.offset.x,
                               &node.materials[0]->emission.r,
                               &node.light->intensity,
                               &node.camera->fieldOfView,
                               &node.particles[0]->start};
    for (double* const number : numbers) {
        for (const double bad : {none, -endless}) {
            const double before = std::exchange(*number, bad);
            EXPECT_NE(nonFiniteNumber(stage), "");
            *number = before;
        }
    }
    node.position.x = endless;
    EXPECT_EQ(nonFiniteNumber(stage), "node /root/beach/coil: its position");
    node.position.x = 0;
    node.orientation = glm::dquat(1, none, 0, 0);
    EXPECT_EQ(nonFiniteNumber(stage), "node /root/beach/coil: its orientation");
}

}  // namespace
}  // namespace gull
