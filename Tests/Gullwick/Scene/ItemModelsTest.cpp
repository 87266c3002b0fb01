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
        forEachNode(*model, [&](const Node& node) {
            if (!node.geometry) return;
            ++meshes;
            EXPECT_FALSE(node.materials.empty());
            EXPECT_FALSE(node.geometry->elements.empty());
        });
        EXPECT_GT(meshes, 0);
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
    const auto highest = [&](bool withLid) {
        Node* lid = chest->find("lid");
        lid->hidden = !withLid;
        return chest->bounds().max.y;
    };
    EXPECT_GT(highest(true), highest(false) + 0.04);
}

}  // namespace
}  // namespace gull
