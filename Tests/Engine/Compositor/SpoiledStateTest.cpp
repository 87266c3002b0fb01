#include "Engine/Compositor/SoftwareContext.h"
#include "Engine/Compositor/TestStage.h"

#include <vector>

namespace gull::test {

namespace {

constexpr PixelSize size{310, 200};

/// The pictures of a short play: at rest, moving, with a touched box, with an overlay, in flight, as a
/// snapshot.
std::vector<Image> play(Renderer& renderer, const Target& window, RenderTier tier) {
    ShoreStage shore;
    std::vector<Image> pictures;
    const auto draw = [&](BuildMode mode) {
        renderer.draw(shore.stage, size, window.framebuffer(), mode);
        pictures.push_back(renderer.readBack(size));
    };
    renderer.setTier(tier);
    draw(BuildMode::complete);
    shore.rig->position.x += 0.7;
    shore.lamp->light->intensity *= 4;
    draw(BuildMode::complete);
    shore.stage.touchPaint({{-5, -0.5, -2}, {-2, 0.6, 0.5}});
    shore.stage.touchStill(Box{{-1, -0.5, -1}, {1, 0.6, 1}});
    draw(BuildMode::complete);

    const std::vector<unsigned char> pixels(6 * 4 * 4, 100);
    const OverlayLayer::Area all[] = {{0, 0, 6, 4}};
    OverlayLayer bitmap;
    bitmap.place = {1, 2, 6, 4};
    bitmap.pixels = pixels.data();
    bitmap.strideBytes = 24;
    bitmap.changes = bitmap.coverage = all;
    bitmap.opacity = 0.5;
    OverlayLayer wash;
    wash.id = 1;
    wash.place = {0, 0, 100, 80};
    wash.wash = {{0, {0, 0, 0, 0}}, {1, {0, 0, 0, 0.5}}};
    renderer.drawOverlay(std::vector{wash, bitmap});
    pictures.push_back(renderer.readBack(size));

    shore.camera->position += glm::dvec3(0.03, 0.04, 0.04);  // a shake
    draw(BuildMode::gradual);
    shore.camera->position += glm::dvec3(1, 2, 2);  // a flight
    draw(BuildMode::gradual);
    pictures.push_back(renderer.snapshot(shore.stage, size));
    return pictures;
}

}  // namespace

class SpoiledState : public RenderTest {};

TEST_F(SpoiledState, NoDrawReliesOnWhatAnotherOneLeft) {
    const Target window = makeWindow(size);
    for (const RenderTier tier : {RenderTier::fast, RenderTier::full}) {
        renderer.emplace();
        const std::vector<Image> plain = play(*renderer, window, tier);
        renderer.emplace();
        renderer->setSpoiling(true);
        const std::vector<Image> spoiled = play(*renderer, window, tier);
        ASSERT_EQ(plain.size(), spoiled.size());
        for (std::size_t i = 0; i < plain.size(); ++i)
            EXPECT_EQ(plain[i], spoiled[i])
                << "picture " << i << (tier == RenderTier::fast ? " fast" : " full");
    }
}

}  // namespace gull::test
