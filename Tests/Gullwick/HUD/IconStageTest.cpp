#include "Gullwick/HUD/IconStage.h"

#include "Gullwick/Scene/ItemModels.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace gull {
namespace {

TEST(IconStage, FramesEveryItemAlikeWhateverItsSizeAndPose) {
    Textures textures;
    for (const ItemKind kind : allKinds()) {
        const std::unique_ptr<Stage> stage = iconStage(kind, textures);
        const glm::dvec3 extent = ItemModels::node(kind, textures)->bounds().size();
        const double side = std::max({extent.x, extent.y, extent.z, 0.2});
        ASSERT_NE(stage->pointOfView, nullptr);
        const double scale = stage->pointOfView->camera->orthographicScale.value() / side;
        EXPECT_NEAR(scale, 0.62, 1e-9) << rawValue(kind);
        EXPECT_FALSE(stage->pointOfView->camera->hdr);
        EXPECT_EQ(stage->background, nullptr) << "nothing behind the item";
        EXPECT_EQ(stage->environment, iconStage(kind, textures)->environment) << "one sky for all";
    }
}

TEST(IconStage, TipsFlatThingsTowardTheViewerAndLightsFromTheRight) {
    Textures textures;
    EXPECT_EQ(iconStage(ItemKind::coin, textures)->root.children().front()->eulerAngles,
              glm::dvec3(-0.75, -0.45, 0));
    EXPECT_EQ(iconStage(ItemKind::chest, textures)->root.children().front()->eulerAngles,
              glm::dvec3(0.35, -0.6, 0));
    const std::unique_ptr<Stage> stage = iconStage(ItemKind::nail, textures);
    Node* light = stage->root.find("light");
    ASSERT_NE(light, nullptr);
    // It shines along its -z axis, from (2, 3, 4) to the origin.
    const glm::dvec3 along = glm::dvec3(light->worldTransform() * glm::dvec4(0, 0, -1, 0));
    EXPECT_NEAR(glm::length(along - glm::normalize(glm::dvec3(-2, -3, -4))), 0, 1e-9);
}

}  // namespace
}  // namespace gull
