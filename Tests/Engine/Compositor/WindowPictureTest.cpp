#include "Engine/Compositor/SoftwareContext.h"
#include "Engine/Compositor/TestStage.h"
#include "Engine/Compositor/WaterLayer.h"
#include "Engine/Stage/Primitives.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace gull::test {

namespace {
constexpr PixelSize size{620, 400};
constexpr PixelRect beach{0, 180, 620, 220};  ///< below the sea, which moves and is shaded at half resolution
}  // namespace

class WindowPicture : public RenderTest {
  protected:
    Image draw(const Stage& stage, const PixelSize& of = size, BuildMode mode = BuildMode::complete) {
        const Target window = makeWindow({of.width, of.height});
        renderer->draw(stage, {of.width, of.height}, window.framebuffer(), mode);
        return renderer->readBack(of);
    }
    ShoreStage shore;
};

TEST_F(WindowPicture, FullTierIsTheSnapshotButForEdgesOfWhatMoves) {
    renderer->setTier(RenderTier::full);
    Image picture = draw(shore.stage);
    EXPECT_TRUE(renderer->settled());
    // The static layer's depth has one sample a pixel, so edges between moving and still things are a little
    // harder.
    EXPECT_GE(psnr(picture, renderer->snapshot(shore.stage, size)), 36);
}

TEST_F(WindowPicture, FastTierLooksTheSame) {
    renderer->setTier(RenderTier::fast);
    Image picture = draw(shore.stage), truth = renderer->snapshot(shore.stage, size);
    EXPECT_GE(psnr(picture, truth, beach), 34);
    EXPECT_GE(psnr(picture, truth, {0, 0, 620, 140}), 28) << "the test stage's sea is all waves";
}

TEST_F(WindowPicture, WhatMovesHasSmoothEdgesInBothTiers) {
    // A slanting bar, black before a bright ground: pixels between the two brightnesses make its edges
    // smooth.
    auto black = std::make_shared<Material>();
    black->roughness = 1;
    black->diffuse = {0, 0, 0, 1};
    Node& bar = shore.stage.root.add(makeNode(primitives::box(3, 0.3, 0.3), black));
    bar.position = {0, 1.5, 1};
    bar.eulerAngles = {0, 0, 0.3};
    bar.layer = Layer::moving;
    bar.castsShadow = false;
    const auto between = [&](RenderTier tier) {
        renderer->setTier(tier);
        bar.hidden = true;
        const Image without = draw(shore.stage);
        bar.hidden = false;
        const Image with = draw(shore.stage);
        int count = 0;
        for (int y = 0; y < with.height; ++y)
            for (int x = 0; x < with.width; ++x) {
                const int ground = without.at(x, y)[1], seen = with.at(x, y)[1];
                if (ground > 60 && seen > ground / 5 && seen < ground * 4 / 5) ++count;
            }
        return count;
    };
    const int full = between(RenderTier::full);
    ASSERT_GT(full, 50);
    const int fast = between(RenderTier::fast);
    EXPECT_GT(fast, full / 3) << full;
}

TEST_F(WindowPicture, TheBackgroundShowsWhereverNoWaterHidesIt) {
    renderer->setTier(RenderTier::full);
    shore.ground->hidden = true;
    shore.camera->lookAt({0, -4, 0});  // steeply down: water all over, nothing below it
    const auto nearness = [&] { return psnr(draw(shore.stage), renderer->snapshot(shore.stage, size)); };
    shore.sea->scale = {1, 3, 1};
    shore.stage.touchStill();
    EXPECT_GE(nearness(), 36) << "under water alone";
    shore.sea->scale = {0.02, 3, 1};
    shore.stage.touchStill();
    EXPECT_GE(nearness(), 36) << "beside the water";
}

TEST_F(WindowPicture, WaterThatGlittersGlows) {
    renderer->setTier(RenderTier::fast);
    // A mirror-like sea that reflects the sun, and a glow that everybody sees.
    shore.sun->position = glm::normalize(glm::dvec3(0, 0.35, -1)) * 60.0;
    shore.sun->lookAt({0, 0, 0});
    shore.sun->light->intensity *= 3;
    shore.camera->camera->bloomIntensity = 3;
    shore.stage.touchStill();
    const PixelRect water{0, 60, 620, 80};
    EXPECT_GE(psnr(draw(shore.stage), renderer->snapshot(shore.stage, size), water), 22)
        << "19 without the glow";
}

TEST_F(WindowPicture, NoBrightGroundShinesThroughWhereThingsStandBeforeTheWater) {
    // Black fins thinner than a pixel, before dark water over a white ground.
    renderer->setTier(RenderTier::fast);
    shore.sea->materials[0]->diffuse = {0, 0.02, 0.05, 1};
    shore.sea->materials[0]->opacity = 0.97;
    auto black = std::make_shared<Material>();
    black->lighting = Material::Lighting::lambert;
    black->diffuse = {0, 0, 0, 1};
    Node& fins = shore.stage.root.addChild();
    for (int i = 0; i < 24; ++i) {
        Node& fin = fins.add(makeNode(primitives::box(0.03, 3, 0.03), black));
        fin.position = {-6 + 0.5 * i, 3, 0};
        fin.eulerAngles = {0, 0, 0.4};
        fin.castsShadow = false;
    }
    const Image with = draw(shore.stage);
    EXPECT_GE(psnr(with, renderer->snapshot(shore.stage, size), {0, 40, 620, 100}), 27.4)
        << "26.5 with a fringe";
}

TEST_F(WindowPicture, WaterMirrorsWhatStandsInIt) {
    auto red = std::make_shared<Material>();
    red->diffuse = {1, 0, 0, 1};
    red->roughness = 1;
    Node& wall = shore.stage.root.add(makeNode(primitives::box(14, 5, 0.3), red));
    wall.position = {0, 1, -16};
    shore.sea->materials[0]->normalMap.intensity = 0.1;
    shore.stage.touchStill();
    const Node& eye = *shore.stage.pointOfView;
    const auto redness = [&](const Image& picture, double z) {
        double reds = 0, all = 0;
        for (double x = -4; x <= 4; x += 0.25) {
            const glm::dvec3 at =
                project(*eye.camera, eye.worldTransform(), {x, -0.1, z}, {size.width, size.height});
            const std::uint8_t* pixel = picture.at(static_cast<int>(at.x), static_cast<int>(at.y));
            reds += pixel[0];
            all += pixel[0] + pixel[1] + pixel[2];
        }
        return reds / all;
    };
    const auto check = [&](const char* how, const auto& picture) {
        SCOPED_TRACE(how);
        const Image with = picture();
        wall.castsShadow = false;  // the mirror leaves out what casts no shadow, as the ground
        shore.stage.touchStill();
        const Image without = picture();
        wall.castsShadow = true;
        shore.stage.touchStill();
        EXPECT_GT(redness(with, -14.5), redness(without, -14.5) + 0.03) << "before the wall";
        EXPECT_NEAR(redness(with, -6), redness(without, -6), 0.01) << "too near to mirror it";
    };
    check("snapshot", [&] { return renderer->snapshot(shore.stage, size); });
    for (const RenderTier tier : {RenderTier::fast, RenderTier::full}) {
        renderer->setTier(tier);
        check(tier == RenderTier::fast ? "fast tier" : "full tier", [&] { return draw(shore.stage); });
    }
}

TEST_F(WindowPicture, ASketchHasTwoColoursAndLeavesNothingBehind) {
    renderer->setTier(RenderTier::fast);
    const Image alone = draw(shore.stage);
    const Target window = makeWindow({size.width, size.height});
    renderer->fillPlaceholder(size, window.framebuffer(), {1, 0, 0, 1}, {0, 0, 1, 1}, 0.25);
    const Image sketch = device->readColour(window.framebuffer(), size);
    EXPECT_EQ(sketch.at(300, 99)[0], 255) << "a quarter of 400 rows is red";
    EXPECT_EQ(sketch.at(300, 100)[2], 255) << "the rest is blue";
    renderer->draw(shore.stage, size, window.framebuffer(), BuildMode::complete);
    EXPECT_GE(psnr(renderer->readBack(size), alone), 60);
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
    shore.stage.touchStill(box);
    Image both = draw(shore.stage);
    EXPECT_LT(psnr(painted, both), 40);
    shore.stage.touchStill();
    EXPECT_GE(psnr(both, draw(shore.stage)), 50);
}

TEST_F(WindowPicture, AChangeIsSeenWholeAfterAFewFramesAndNotBefore) {
    renderer->setTier(RenderTier::fast);
    const Image before = draw(shore.stage);
    Node& stone = shore.stage.root.add(makeNode(primitives::sphere(0.3), std::make_shared<Material>()));
    stone.position = {-3.5, 0.3, -0.8};
    shore.stage.touchStill(stone.bounds());
    Image picture = draw(shore.stage, size, BuildMode::gradual);
    int frames = 1;
    for (; !renderer->settled() && frames < 20; ++frames) {
        EXPECT_GE(psnr(before, picture, beach), 60) << "as if nothing had happened";
        picture = draw(shore.stage, size, BuildMode::gradual);
    }
    EXPECT_LT(frames, 8);
    EXPECT_LT(psnr(before, picture, beach), 45);
    shore.stage.touchStill();
    EXPECT_GE(psnr(picture, draw(shore.stage)), 50);

    // A change that comes during another one is not forgotten.
    stone.position.x += 0.4;
    shore.stage.touchStill(stone.bounds());
    draw(shore.stage, size, BuildMode::gradual);
    stone.hidden = true;
    shore.stage.touchStill({{-5, -0.5, -2}, {-2, 0.6, 0.5}});
    EXPECT_GE(psnr(before, draw(shore.stage)), 50);
}

TEST_F(WindowPicture, WhatDriftsIsWholeAgainAfterAFewFrames) {
    renderer->setTier(RenderTier::fast);
    const PixelSize large{1240, 800};
    draw(shore.stage, large);
    for (double rise : {0.25, -0.1}) {
        shore.sea->position.y += rise;
        Image strips = draw(shore.stage, large, BuildMode::gradual);
        for (int frame = 1; frame <= WaterLayer::mostStrips; ++frame)
            strips = draw(shore.stage, large, BuildMode::gradual);
        Image next = draw(shore.stage, large, BuildMode::gradual);
        EXPECT_EQ(strips, next) << "after one turn nothing changes";
        shore.stage.touchStill();
        // What it mirrors is only shifted as it rises, not drawn again.
        EXPECT_GE(psnr(next, draw(shore.stage, large)), 47) << "as if drawn at once";
    }
}

TEST_F(WindowPicture, WhatDriftsIsWholeWithinOneTurnAtAnyPace) {
    renderer->setTier(RenderTier::fast);
    const PixelSize large{1240, 800};
    draw(shore.stage, large);
    const auto framesUntilWhole = [&](double took) {
        for (int frame = 0; frame < 300; ++frame) renderer->frameTook(took);
        shore.sea->position.y += 0.05;
        std::vector<Image> pictures;
        for (int frame = 0; frame <= WaterLayer::mostStrips; ++frame)
            pictures.push_back(draw(shore.stage, large, BuildMode::gradual));
        const auto whole = std::find(pictures.begin(), pictures.end(), pictures.back());
        return static_cast<int>(whole - pictures.begin()) + 1;
    };
    const int slow = framesUntilWhole(0.1);
    EXPECT_LE(slow, WaterLayer::mostStrips);
    EXPECT_LE(framesUntilWhole(0.001), WaterLayer::fewestStrips + 1);
}

TEST_F(WindowPicture, WhatMovesLeavesNothingBehind) {
    renderer->setTier(RenderTier::fast);
    Image first = draw(shore.stage);
    glm::dvec3 home = shore.rig->position;
    shore.rig->position += glm::dvec3(3, 0, 1);
    Image away = draw(shore.stage);
    EXPECT_LT(psnr(first, away), 35);
    shore.rig->position = home;
    draw(shore.stage);
    EXPECT_EQ(first, draw(shore.stage)) << "from the second picture on, because a leap's edges stay rough";
}

TEST_F(WindowPicture, WhatRestsIsDrawnAgainWhereTheSeaIs) {
    renderer->setTier(RenderTier::fast);
    const PixelSize large{1240, 800};
    shore.stage.root.find("burst")->hidden = true;
    shore.rig->position.z -= 3;
    draw(shore.stage, large);
    for (double rise : {0.25, -0.1}) {
        // Strips of different heights of the sea, as while a tide rises.
        for (int frame = 0; frame < 7; ++frame) {
            shore.sea->position.y += rise / 7;
            draw(shore.stage, large, BuildMode::gradual);
        }
        Image resting;
        for (int frame = 0; frame <= WaterLayer::mostStrips; ++frame)
            resting = draw(shore.stage, large, BuildMode::gradual);
        shore.rig->hidden = true;
        EXPECT_LT(psnr(resting, draw(shore.stage, large, BuildMode::gradual)), 45);
        shore.rig->hidden = false;
        EXPECT_GE(psnr(resting, draw(shore.stage, large, BuildMode::gradual)), 70) << "as if drawn anew";
    }
    const Image dim = draw(shore.stage, large, BuildMode::gradual);
    shore.lamp->light->intensity *= 20;
    EXPECT_NE(dim, draw(shore.stage, large, BuildMode::gradual)) << "a lamp alone changes all that it lights";
}

TEST_F(WindowPicture, WarmingUpIsNotSeen) {
    for (const RenderTier tier : {RenderTier::fast, RenderTier::full}) {
        renderer->setTier(tier);
        const Image before = draw(shore.stage);
        int calls = 1;
        while (!renderer->warmUp(0) && calls < 1000) ++calls;
        EXPECT_LT(calls, 1000);
        EXPECT_GT(calls, 1) << "one program at a time";
        EXPECT_EQ(before, draw(shore.stage));
    }
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
    Image shaken = draw(shore.stage, size, BuildMode::gradual);
    EXPECT_FALSE(renderer->settled());
    EXPECT_GE(psnr(shaken, renderer->snapshot(shore.stage, size), beach), 27)
        << "edges of props shift a little";
}

TEST_F(WindowPicture, AShakeShiftsTheKeptPictureOfATallWindowToo) {
    renderer->setTier(RenderTier::fast);
    const PixelSize tall{400, 2160};
    draw(shore.stage, tall);
    shore.camera->position += glm::dvec3(0.06, 0.09, 0.09);
    const Image shaken = draw(shore.stage, tall, BuildMode::gradual);
    EXPECT_GE(psnr(shaken, renderer->snapshot(shore.stage, tall), {0, 1080, 400, 1080}), 31)
        << "28.6 as drawn in a flight";
}

TEST_F(WindowPicture, ABusyMachineIsNotLeftWithTheFlightsPicture) {
    renderer->setTier(RenderTier::fast);
    const PixelSize large{1240, 800};
    draw(shore.stage, large, BuildMode::gradual);
    int frames = 1;
    for (; !renderer->settled() && frames < 40; ++frames) {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));  // other programs have the processor
        shore.stage.time += 0.05;
        draw(shore.stage, large, BuildMode::gradual);
    }
    EXPECT_LE(frames, 20) << "more than 40 where a step a frame has to do";
}

TEST_F(WindowPicture, WhatDriftsStandsStillWhileThePictureShakes) {
    renderer->setTier(RenderTier::fast);
    const PixelSize large{1240, 800};
    shore.rig->hidden = true;  // the sea around it always moves
    draw(shore.stage, large);
    const glm::dvec3 rest = shore.camera->position;
    shore.camera->position += glm::dvec3(0.03, 0.04, 0.04);
    const Image shaken = draw(shore.stage, large, BuildMode::gradual);
    shore.sea->position.y += 0.25;
    for (int frame = 0; frame < 3; ++frame) EXPECT_EQ(shaken, draw(shore.stage, large, BuildMode::gradual));
    shore.camera->position = rest;
    Image after;
    for (int frame = 0; frame <= WaterLayer::mostStrips; ++frame)
        after = draw(shore.stage, large, BuildMode::gradual);
    shore.stage.touchStill();
    EXPECT_GE(psnr(after, draw(shore.stage, large)), 50) << "and comes round afterwards";
}

TEST_F(WindowPicture, PaintShowsWhateverTheLighting) {
    renderer->setTier(RenderTier::fast);
    shore.groundMaterial->lighting = Material::Lighting::lambert;
    const Image bare = draw(shore.stage);
    shore.marks->replace(plainTexture({0.4, 0.4, 0.4, 1}, 320, 200)->image());
    shore.stage.touchStill();
    const Image painted = draw(shore.stage);
    EXPECT_LT(psnr(bare, painted, beach), 25);
    EXPECT_GE(psnr(painted, renderer->snapshot(shore.stage, size), beach), 34);
}

TEST_F(WindowPicture, AKeptLayerBegunAnewServesAnotherStageAndSize) {
    renderer->setTier(RenderTier::fast);
    draw(shore.stage);
    ShoreStage other;
    other.marks->replace(plainTexture({0.4, 0.6, 0.8, 1}, 320, 200)->image());
    const PixelSize wide{700, 400};
    const Image reused = draw(other.stage, wide);
    EXPECT_EQ(reused, draw(other.stage, wide));
    EXPECT_GE(psnr(reused, renderer->snapshot(other.stage, wide), {0, 180, 700, 220}), 34);
    renderer->setTier(RenderTier::full);
    other.stage.touchStill();
    EXPECT_GE(psnr(draw(other.stage, size), renderer->snapshot(other.stage, size)), 36);
}

TEST_F(WindowPicture, AStageInThePlaceOfOneThatIsGoneIsAnotherOne) {
    renderer->setTier(RenderTier::fast);
    std::optional<ShoreStage> stage(std::in_place);
    draw(stage->stage);
    stage.emplace();  // at the same address, touched as often
    stage->groundMaterial->diffuse = {0.9, 0.3, 0.2, 1};
    stage->stage.touchPaint({{-5, -0.5, -2}, {-2, 0.6, 0.5}});
    const Image second = draw(stage->stage);
    EXPECT_GE(psnr(second, renderer->snapshot(stage->stage, size), beach), 34);
}

TEST_F(WindowPicture, AFlightIsShownAtOnceInCoarseShapesAndEndsInTheKeptPicture) {
    renderer->setTier(RenderTier::fast);
    const glm::dvec3 rest = shore.camera->position;
    shore.stage.restingView = shore.camera->worldTransform();
    auto from = [&](double left) {
        shore.camera->position = rest * (1 + left);
        return draw(shore.stage, size, BuildMode::gradual);
    };
    Image flying = from(0.3);
    EXPECT_FALSE(renderer->settled());
    EXPECT_GE(psnr(flying, renderer->snapshot(shore.stage, size), beach), 24) << "matt, half as sharp";

    shore.ground->coarseGeometry = std::make_shared<const Geometry>(primitives::plane(0.01, 0.01));
    EXPECT_LT(psnr(from(0.3), flying), 30) << "the ground is gone, as its coarse shape is";

    for (int i = 0; i < 200 && !renderer->settled(); ++i) {
        shore.stage.time += 0.02;
        from(0);
    }
    EXPECT_TRUE(renderer->settled());
    EXPECT_GE(psnr(from(0), renderer->snapshot(shore.stage, size), beach), 34);
}

TEST_F(WindowPicture, ANewSizeStretchesTheOldPictureUntilItsOwnIsBuilt) {
    renderer->setTier(RenderTier::fast);
    draw(shore.stage);
    PixelSize wide{700, 400};
    Image stretched = draw(shore.stage, wide, BuildMode::gradual);
    EXPECT_FALSE(renderer->settled());
    EXPECT_GT(stretched.at(350, 300)[0], 60) << "sand, not an empty frame";
    for (int i = 0; i < 200 && !renderer->settled(); ++i)
        stretched = draw(shore.stage, wide, BuildMode::gradual);
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

}  // namespace gull::test
