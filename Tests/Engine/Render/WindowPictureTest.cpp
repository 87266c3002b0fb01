#include "Engine/Render/SoftwareContext.h"
#include "Engine/Render/Target.h"
#include "Engine/Render/TestStage.h"
#include "Engine/Stage/Primitives.h"

#include <algorithm>
#include <vector>

namespace gull::test {

namespace {
constexpr Renderer::Size size{620, 400};
constexpr PixelRect beach{0, 180, 620, 220};  ///< below the sea, which moves and is shaded at half resolution
}  // namespace

class WindowPicture : public RenderTest {
  protected:
    Image draw(const Stage& stage, const Renderer::Size& of = size, bool wait = true) {
        Target window({of.width, of.height}, {{Format::rgba8}});
        renderer->draw(stage, {of.width, of.height}, window.framebuffer(), wait);
        return renderer->readBack(of);
    }
    ShoreStage shore;
};

TEST_F(WindowPicture, FullTierIsTheSnapshotButForEdgesOfWhatMoves) {
    renderer->setTier(RenderTier::full);
    Image picture = draw(shore.stage);
    EXPECT_TRUE(renderer->settled());
    // Kept depth has one sample a pixel, so edges between what moves and what rests are a little harder.
    EXPECT_GE(psnr(picture, renderer->snapshot(shore.stage, size)), 36);
}

TEST_F(WindowPicture, FastTierLooksTheSame) {
    renderer->setTier(RenderTier::fast);
    Image picture = draw(shore.stage), truth = renderer->snapshot(shore.stage, size);
    EXPECT_GE(psnr(picture, truth, beach), 34);
    EXPECT_GE(psnr(picture, truth, {0, 0, 620, 140}), 28) << "the test stage's sea is all waves";
}

TEST_F(WindowPicture, ATouchedBoxIsDrawnAgainAsIfEverythingWere) {
    renderer->setTier(RenderTier::fast);
    const Box box{{-5, -0.5, -2}, {-2, 0.6, 0.5}};
    auto paint = [&](std::uint8_t shade) {
        Image marks = shore.marks->image();
        for (int y = 60; y < 110; ++y)
            for (int x = 60; x < 120; ++x)
                for (int k = 0; k < 3; ++k) marks.at(x, y)[k] = shade;
        shore.marks->update(marks, {60, 60, 60, 50});
    };
    Image before = draw(shore.stage);
    paint(90);
    shore.stage.touchPaint(box);
    Image painted = draw(shore.stage);
    EXPECT_LT(psnr(before, painted), 40) << "the mark shows";
    EXPECT_GE(psnr(painted, renderer->snapshot(shore.stage, size), beach), 34) << "where it belongs";

    Node& stone = shore.stage.root.add(makeNode(primitives::sphere(0.3), std::make_shared<Material>()));
    stone.position = {-3.5, 0.3, -0.8};
    paint(180);
    shore.stage.touchKept(box);
    Image both = draw(shore.stage);
    EXPECT_LT(psnr(painted, both), 40);
    shore.stage.touchKept();
    EXPECT_GE(psnr(both, draw(shore.stage)), 50);
}

TEST_F(WindowPicture, WhatDriftsIsWholeAgainAfterAFewFrames) {
    renderer->setTier(RenderTier::fast);
    const Renderer::Size large{1240, 800};
    draw(shore.stage, large);
    shore.sea->position.y += 0.25;
    Image strips = draw(shore.stage, large, false);
    for (int frame = 1; frame < 4; ++frame) strips = draw(shore.stage, large, false);
    Image next = draw(shore.stage, large, false);
    EXPECT_EQ(strips, next) << "after one turn nothing changes";
    shore.stage.touchKept();
    EXPECT_GE(psnr(next, draw(shore.stage, large)), 50) << "as if drawn at once";
}

TEST_F(WindowPicture, WhatMovesLeavesNothingBehind) {
    renderer->setTier(RenderTier::fast);
    Image first = draw(shore.stage);
    glm::dvec3 home = shore.rig->position;
    shore.rig->position += glm::dvec3(3, 0, 1);
    Image away = draw(shore.stage);
    EXPECT_LT(psnr(first, away), 35);
    shore.rig->position = home;
    EXPECT_EQ(first, draw(shore.stage));
}

TEST_F(WindowPicture, AMovingShadowAndLampReachTheKeptGround) {
    renderer->setTier(RenderTier::fast);
    Image lit = draw(shore.stage);
    shore.lamp->light->intensity = 0;
    Image dim = draw(shore.stage);
    for (Node* part : {shore.rig}) part->hidden = true;
    Image bare = draw(shore.stage);
    auto brightness = [](const Image& image) {
        double sum = 0;
        for (int y = 180; y < 380; ++y)
            for (int x = 280; x < 500; ++x) sum += image.at(x, y)[0];
        return sum;
    };
    EXPECT_GT(brightness(lit), brightness(dim));
    EXPECT_GT(brightness(bare), brightness(dim)) << "without the rig there is no shadow";
}

TEST_F(WindowPicture, AShakeShiftsTheKeptPicture) {
    renderer->setTier(RenderTier::fast);
    draw(shore.stage);
    shore.camera->position += glm::dvec3(0.03, 0.04, 0.04);
    Image shaken = draw(shore.stage, size, false);
    EXPECT_FALSE(renderer->settled());
    EXPECT_GE(psnr(shaken, renderer->snapshot(shore.stage, size), beach), 27)
        << "edges of props shift a little";
}

TEST_F(WindowPicture, ANewSizeStretchesTheOldPictureUntilItsOwnIsBuilt) {
    renderer->setTier(RenderTier::fast);
    draw(shore.stage);
    Renderer::Size wide{700, 400};
    Image stretched = draw(shore.stage, wide, false);
    EXPECT_FALSE(renderer->settled());
    EXPECT_GT(stretched.at(350, 300)[0], 60) << "sand, not an empty frame";
    for (int i = 0; i < 200 && !renderer->settled(); ++i) stretched = draw(shore.stage, wide, false);
    EXPECT_TRUE(renderer->settled());
    EXPECT_GE(psnr(stretched, renderer->snapshot(shore.stage, wide), {0, 180, 700, 220}), 34);
}

TEST_F(WindowPicture, ASnapshotDisturbsNothing) {
    renderer->setTier(RenderTier::fast);
    Image before = draw(shore.stage);
    FlatStage flat;
    renderer->snapshot(flat.stage, {160, 160});
    renderer->snapshot(shore.stage, {200, 300});
    EXPECT_EQ(before, draw(shore.stage));
}

TEST_F(WindowPicture, TheOverlayLiesOnTopAndKeepsWhatWasNotDirty) {
    Target window({8, 8}, {{Format::rgba8}});
    FlatStage flat;
    flat.material->lighting = Material::Lighting::constant;
    renderer->draw(flat.stage, {8, 8}, window.framebuffer(), true);
    // Premultiplied blue, green, red, alpha: opaque red on the top row, half black below, then nothing.
    std::vector<unsigned char> pixels(8 * 8 * 4, 0);
    for (std::size_t x = 0; x < 8; ++x) {
        pixels[x * 4 + 2] = pixels[x * 4 + 3] = 255;
        pixels[(8 + x) * 4 + 3] = 128;
    }
    const Renderer::Area all[] = {{0, 0, 8, 8}}, secondRow[] = {{0, 1, 8, 1}};
    renderer->drawOverlay(pixels.data(), 32, {8, 8}, all, all);
    Image image = renderer->readBack({8, 8});
    EXPECT_EQ(image.at(3, 0)[0], 255);
    EXPECT_EQ(image.at(3, 0)[1], 0);
    EXPECT_NEAR(image.at(3, 1)[1], 127, 2);
    EXPECT_GE(image.at(3, 4)[1], 254);
    std::fill(pixels.begin(), pixels.end(), static_cast<unsigned char>(0));
    renderer->draw(flat.stage, {8, 8}, window.framebuffer(), true);
    renderer->drawOverlay(pixels.data(), 32, {8, 8}, secondRow, all);
    image = renderer->readBack({8, 8});
    EXPECT_EQ(image.at(3, 0)[1], 0) << "not dirty: as it was uploaded";
    EXPECT_GE(image.at(3, 1)[1], 254) << "cleared";
}

}  // namespace gull::test
