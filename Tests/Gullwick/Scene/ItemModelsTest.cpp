#include "Gullwick/Scene/ItemModels.h"

#include "Gullwick/Scene/SceneTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace gull {
namespace {

TEST(ItemModels, everyKindHasAModelOfItsSize) {
    Textures textures;
    for (const ItemKind kind : allKinds()) {
        SCOPED_TRACE(rawValue(kind));
        const auto model = ItemModels::node(kind, textures);
        ASSERT_TRUE(model);
        const Box bounds = model->bounds();
        const glm::dvec3 size = bounds.size(), middle = (bounds.min + bounds.max) / 2.0;
        EXPECT_GT(std::max(size.x, size.y), 0.25);
        EXPECT_LT(std::max(size.x, size.y), 1.1);
        EXPECT_LT(glm::length(middle), 0.25) << "turns about its middle";
        int meshes = 0;
        std::size_t triangles = 0, quickTriangles = 0;
        forEachNode(*model, [&](const Node& node) {
            if (!node.geometry) return;
            ++meshes;
            triangles += node.geometry->triangleCount();
            quickTriangles += (node.coarseGeometry ? node.coarseGeometry : node.geometry)->triangleCount();
            EXPECT_FALSE(node.materials.empty());
            EXPECT_FALSE(node.geometry->elements.empty());
        });
        EXPECT_GT(meshes, 0);
        EXPECT_LT(triangles, 8000u);
        EXPECT_LT(quickTriangles, 6000u) << "of which a software rasteriser draws every one in a frame";
        EXPECT_EQ(model->find("lid") != nullptr, kind == ItemKind::chest);
    }
}

TEST(ItemModels, twoOfAKindAreIndependent) {
    Textures textures;
    const auto one = ItemModels::node(ItemKind::coin, textures),
               other = ItemModels::node(ItemKind::coin, textures);
    one->scale = {3, 3, 3};
    EXPECT_EQ(other->scale, glm::dvec3(1));
    EXPECT_NE(one->children().front().get(), other->children().front().get());
    EXPECT_EQ(one->children().front()->materials[1]->diffuseMap.texture,
              other->children().front()->materials[1]->diffuseMap.texture)
        << "but share their picture";
}

TEST(ItemModels, facesLookTowardTheViewer) {
    Textures textures;
    for (const ItemKind kind : {ItemKind::coin, ItemKind::watch, ItemKind::compass, ItemKind::cap}) {
        const auto model = ItemModels::node(kind, textures);
        const Node& disc = *model->children().front();
        const glm::dvec3 top = glm::dvec3(disc.worldTransform()[1]);
        EXPECT_NEAR(top.z, 1, 1e-9) << rawValue(kind);
        EXPECT_EQ(disc.materials.size(), 3u);
    }
}

TEST(ItemModels, aClosedChestHidesItsHoard) {
    Textures textures;
    const auto chest = ItemModels::node(ItemKind::chest, textures);
    Node* lid = chest->find("lid");
    Node* hoard = chest->find("hoard");
    ASSERT_TRUE(lid && hoard);
    // The lid is half an ellipse over its hinge, the box straight below it.
    const glm::dmat4 inLid = glm::inverse(lid->worldTransform()) * hoard->worldTransform();
    int shown = 0;
    for (const Geometry::Vertex& vertex : hoard->geometry->vertices) {
        const glm::dvec3 p(inLid * glm::dvec4(vertex.position, 1));
        EXPECT_LT(std::abs(p.x), 0.55);
        EXPECT_NEAR(p.z, 0.35, 0.35);
        const double across = (p.z - 0.35) / 0.35;
        if (p.y > 0.1925 * std::sqrt(std::max(0.0, 1 - across * across))) ++shown;
    }
    EXPECT_EQ(shown, 0);
    // Nothing of the lid fills the room under it: opened, it is hollow.
    forEachNode(*lid, [&](const Node& node) {
        if (!node.geometry) return;
        for (const Geometry::Vertex& vertex : node.geometry->vertices) {
            const glm::dvec3 p(glm::dvec3(vertex.position) - glm::dvec3(0, 0.02, 0.35));
            EXPECT_GT(p.x * p.x / 0.23 + p.y * p.y / 0.013 + p.z * p.z / 0.075, 1);
        }
    });
}

}  // namespace
}  // namespace gull
