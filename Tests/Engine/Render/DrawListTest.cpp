#include "Engine/Render/DrawList.h"

#include "Engine/Gl/GraphicsDevice.h"
#include "Engine/Gl/OffscreenContext.h"
#include "Engine/Stage/Primitives.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <glm/gtc/matrix_transform.hpp>
#include <map>

namespace gull::test {

namespace {

/// A layer with one opaque thing, one blended one and a lamp.
struct LayerOfTwo {
    LayerOfTwo() {
        material.diffuseMap.texture = std::make_shared<Texture>(Image(2, 2));
        DrawItem item;
        item.mesh = &mesh;
        item.material = &material;
        layer.opaque.push_back(item);
        item.blended = true;
        item.castsShadow = false;
        layer.blended.push_back(item);
        layer.lamps.push_back({{1, 2, 3}, {1, 1, 1}, 0, 2, 2});
    }
    LayerOfTwo(const LayerOfTwo&) = delete;

    Mesh mesh, other;
    Material material;
    DrawLayer layer;
};

using Change = std::function<void(LayerOfTwo&)>;

TEST(AppearanceHash, changesWithEverythingThatIsSeen) {
    const std::pair<const char*, Change> changes[] = {
        {"moved", [](LayerOfTwo& l) { l.layer.opaque[0].model[3].x += 0.001; }},
        {"turned", [](LayerOfTwo& l) { l.layer.blended[0].model[0].z += 0.001; }},
        {"faded", [](LayerOfTwo& l) { l.layer.blended[0].opacity -= 0.01F; }},
        {"another shape", [](LayerOfTwo& l) { l.layer.opaque[0].mesh = &l.other; }},
        {"another part", [](LayerOfTwo& l) { l.layer.opaque[0].element.firstChunk = 1; }},
        {"gone", [](LayerOfTwo& l) { l.layer.blended.pop_back(); }},
        {"opaque now",
         [](LayerOfTwo& l) { std::swap(l.layer.opaque, l.layer.blended), l.layer.blended.clear(); }},
        {"colour", [](LayerOfTwo& l) { l.material.diffuse.g = 0.9; }},
        {"glow", [](LayerOfTwo& l) { l.material.emission.r = 0.1; }},
        {"roughness", [](LayerOfTwo& l) { l.material.roughness = 0.6; }},
        {"map moved", [](LayerOfTwo& l) { l.material.diffuseMap.offset.x = 0.25; }},
        {"map gone", [](LayerOfTwo& l) { l.material.diffuseMap.texture.reset(); }},
        {"lamp dimmed", [](LayerOfTwo& l) { l.layer.lamps[0].colour.b = 0.5F; }},
        {"lamp out", [](LayerOfTwo& l) { l.layer.lamps.clear(); }},
    };
    for (const auto& [what, change] : changes) {
        LayerOfTwo layer;
        const auto before = appearanceHash(layer.layer);
        ASSERT_EQ(before, appearanceHash(layer.layer));
        change(layer);
        EXPECT_NE(appearanceHash(layer.layer), before) << what;
    }
}

TEST(AppearanceHash, staysWhereNothingCanBeToldApart) {
    LayerOfTwo layer;
    const auto before = appearanceHash(layer.layer);
    layer.layer.opaque[0].model[3].x += 1e-6;
    layer.layer.opaque[0].distance = 5;
    EXPECT_EQ(appearanceHash(layer.layer), before);

    layer.layer.particles.push_back({});
    EXPECT_FALSE(appearanceHash(layer.layer).has_value()) << "particles change all the time";
}

TEST(CasterHash, countsWhatThrowsAShadowAlone) {
    LayerOfTwo layer;
    const std::uint64_t before = casterHash(layer.layer);
    layer.material.diffuse.g = 0.5;
    layer.layer.lamps.clear();
    layer.layer.blended.clear();
    EXPECT_EQ(casterHash(layer.layer), before);
    layer.layer.opaque[0].model[3].y += 0.001;
    EXPECT_NE(casterHash(layer.layer), before);
    layer.layer.opaque[0].castsShadow = false;
    const std::uint64_t none = casterHash(layer.layer);
    layer.layer.opaque[0].model[3].y += 1;
    EXPECT_EQ(casterHash(layer.layer), none);
}

/// Meshes are on the graphics card, so a list is made with a context.
class DrawListTest : public testing::Test {
  protected:
    void SetUp() override {
        std::string reason;
        context = OffscreenContext::create(&reason);
        ASSERT_TRUE(context) << reason;
        device.emplace();
        meshes.emplace(*device);
        view.size = {400, 300};
        view.projection = glm::perspective(0.8, 4.0 / 3, 0.5, 100.0);
        view = view.standingAt(glm::dmat4(1));  // looks along -z
    }
    Node& ball(const glm::dvec3& at, double radius = 0.5) {
        Node& node = stage.root.add(makeNode(primitives::sphere(radius), std::make_shared<Material>()));
        node.position = at;
        return node;
    }
    DrawList list(DrawList::Which which = DrawList::Which::all) {
        return DrawList::of(stage, view, *meshes, which);
    }

    std::unique_ptr<OffscreenContext> context;
    std::optional<GraphicsDevice> device;
    std::optional<MeshCache> meshes;
    Stage stage;
    Viewpoint view;
};

TEST_F(DrawListTest, layersOpacityAndOrderAreInherited) {
    Node& parent = stage.root.addChild("parent");
    parent.layer = Layer::moving;
    parent.opacity = 0.5;
    parent.renderingOrder = 3;
    parent.position = {0, 0, -5};
    Node& child = parent.add(makeNode(primitives::sphere(1), std::make_shared<Material>()));
    child.opacity = 0.5;
    child.position = {1, 0, 0};
    const DrawList faded = list();
    ASSERT_EQ(faded.moving.blended.size(), 1U) << "what is faded is blended";
    const DrawItem& item = faded.moving.blended[0];
    EXPECT_FLOAT_EQ(item.opacity, 0.25F);
    EXPECT_EQ(item.order, 3);
    EXPECT_NEAR(item.distance, std::sqrt(26.0), 0.01);
    EXPECT_NEAR(item.radius, std::sqrt(3.0), 0.02);

    child.layer = Layer::water;
    EXPECT_EQ(list().water.blended.size(), 1U);
    parent.hidden = true;
    EXPECT_TRUE(list().water.blended.empty());
}

TEST_F(DrawListTest, smallThingsComeBeforeLargeOnesAndFarBlendedOnesBeforeNear) {
    ball({0, 0, -3}, 1);
    ball({0, 0, -20}, 0.2);
    for (const double z : {-4.0, -9.0, -6.0}) ball({0, 0, z}).materials[0]->blend = Material::Blend::alpha;
    Node& first = ball({0, 0, -2});
    first.materials[0]->blend = Material::Blend::alpha;
    first.renderingOrder = -1;
    const DrawList drawn = list();
    ASSERT_EQ(drawn.still.opaque.size(), 2U);
    EXPECT_LT(drawn.still.opaque[0].radius, drawn.still.opaque[1].radius);
    std::vector<double> distances;
    for (const DrawItem& item : drawn.still.blended) distances.push_back(std::round(item.distance));
    EXPECT_EQ(distances, (std::vector<double>{2, 9, 6, 4}));
}

TEST_F(DrawListTest, leavesOutWhatNeitherIsSeenNorThrowsAShadow) {
    ball({0, 0, 10}).castsShadow = false;  // behind
    EXPECT_TRUE(list().still.opaque.empty());
    ball({0, 0, 10});
    EXPECT_EQ(list().still.opaque.size(), 1U);
    EXPECT_TRUE(list(DrawList::Which::notStill).still.opaque.empty());
}

TEST_F(DrawListTest, elementsOfOneMaterialAreDrawnAsOne) {
    Geometry geometry = primitives::sphere(1);
    const std::uint32_t third = static_cast<std::uint32_t>(geometry.indices.size()) / 9 * 3;
    const auto rest = static_cast<std::uint32_t>(geometry.indices.size()) - 2 * third;
    geometry.elements = {{0, third}, {third, third}, {2 * third, rest}};
    const auto red = std::make_shared<Material>(), blue = std::make_shared<Material>();
    stage.root.add(makeNode(std::make_shared<const Geometry>(geometry), {red, red, blue})).position = {0, 0,
                                                                                                       -5};
    const DrawList two = list();
    ASSERT_EQ(two.still.opaque.size(), 2U);
    std::map<const Material*, std::size_t> chunks;
    for (const DrawItem& item : two.still.opaque) chunks[item.material] = item.element.chunkCount;
    EXPECT_EQ(chunks[red.get()], 2 * chunks[blue.get()]);
}

TEST_F(DrawListTest, theFirstDirectionalLightIsTheSun) {
    for (const double intensity : {500.0, 900.0}) {
        auto light = std::make_shared<Light>();
        light->intensity = intensity;
        stage.root.addChild().light = light;
    }
    auto ambient = std::make_shared<Light>(), off = std::make_shared<Light>(), on = std::make_shared<Light>();
    ambient->kind = Light::Kind::ambient;
    ambient->intensity = 250;
    off->kind = on->kind = Light::Kind::omni;
    off->intensity = 0;
    for (const auto& light : {ambient, off, on}) stage.root.addChild().light = light;
    const DrawList lit = list();
    ASSERT_TRUE(lit.sun.light);
    EXPECT_NEAR(lit.sun.colour.r, 0.5, 1e-6);
    EXPECT_NEAR(lit.ambient.g, 0.25, 1e-6);
    EXPECT_EQ(lit.still.lamps.size(), 1U) << "a lamp without strength is none";
    // A point on the light's axis is in the middle of its shadow map.
    const glm::dvec4 ahead = lit.sun.matrix * glm::dvec4(0, 0, -1, 1);
    EXPECT_NEAR(ahead.x, 0.5, 1e-9);
    EXPECT_NEAR(ahead.y, 0.5, 1e-9);
}

}  // namespace

}  // namespace gull::test
