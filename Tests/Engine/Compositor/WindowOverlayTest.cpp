#include "Engine/Compositor/SoftwareContext.h"
#include "Engine/Compositor/TestStage.h"
#include "Engine/Compositor/WaterLayer.h"

#include <algorithm>
#include <vector>

namespace gull::test {

class WindowOverlay : public RenderTest {
  protected:
    ShoreStage shore;
};

TEST_F(WindowOverlay, LayersLieOnTopAndKeepWhatDidNotChange) {
    const PixelSize size{8, 8};
    const Target window = makeWindow({8, 8});
    FlatStage flat;
    flat.material->lighting = Material::Lighting::constant;
    // A bitmap of 6 by 4 pixels at (1, 2), premultiplied blue, green, red, alpha: opaque red on the top row,
    // half black on the next, nothing below. Behind it a wash over the whole left half.
    std::vector<unsigned char> pixels(6 * 4 * 4, 0);
    for (std::size_t x = 0; x < 6; ++x) {
        pixels[x * 4 + 2] = pixels[x * 4 + 3] = 255;
        pixels[(6 + x) * 4 + 3] = 128;
    }
    const OverlayLayer::Area all[] = {{0, 0, 6, 4}}, secondRow[] = {{0, 1, 6, 1}},
                             fiveColumns[] = {{0, 0, 5, 4}};
    OverlayLayer wash;
    wash.place = {0, 0, 4, 8};
    wash.wash = {{0, {0, 0, 0, 0}}, {0.5, {0, 0, 0, 1}}, {1, {0, 0, 1, 1}}};
    OverlayLayer bitmap;
    bitmap.id = 3;
    bitmap.place = {1, 2, 6, 4};
    bitmap.pixels = pixels.data();
    bitmap.strideBytes = 24;
    bitmap.changes = all;
    bitmap.coverage = fiveColumns;
    const auto shown = [&](std::vector<OverlayLayer> layers) {
        renderer->draw(flat.stage, size, window.framebuffer(), BuildMode::complete);
        renderer->drawOverlay(layers);
        return renderer->readBack(size);
    };
    Image image = shown({bitmap});
    EXPECT_EQ(image.at(5, 2)[0], 255);
    EXPECT_EQ(image.at(5, 2)[1], 0);
    EXPECT_NEAR(image.at(5, 3)[1], 127, 2);
    EXPECT_GE(image.at(5, 4)[1], 254);
    EXPECT_GE(image.at(6, 2)[1], 254) << "not covered";
    EXPECT_GE(image.at(0, 2)[1], 254) << "beside it";

    std::fill(pixels.begin(), pixels.end(), static_cast<unsigned char>(0));
    bitmap.changes = secondRow;
    image = shown({bitmap});
    EXPECT_EQ(image.at(5, 2)[1], 0) << "not changed: as it was uploaded";
    EXPECT_GE(image.at(5, 3)[1], 254) << "cleared";

    bitmap.changes = {};
    bitmap.opacity = 0.25;
    bitmap.place.y = 1;
    image = shown({wash, bitmap});
    EXPECT_NEAR(image.at(5, 1)[1], 191, 2) << "moved and faded";
    // The wash's rows have their centres at (y + 1/2) / 8: black comes in until the middle, then blue.
    EXPECT_NEAR(image.at(0, 0)[1], 255 - 255 / 8.0, 3);
    EXPECT_NEAR(image.at(0, 3)[1], 255 - 255 * 7 / 8.0, 3);
    EXPECT_NEAR(image.at(0, 6)[2], 255 * 5 / 8.0, 3);
    EXPECT_GE(image.at(4, 3)[1], 254) << "beside the wash";
    EXPECT_LT(image.at(1, 1)[1], image.at(0, 1)[1]) << "the red one lies over it";
}

TEST_F(WindowOverlay, AFramebufferThatKeepsItsPictureIsDrawnOnlyWhereItChanges) {
    renderer->setTier(RenderTier::fast);
    const PixelSize large{1240, 800};
    const Target window = makeWindow({large.width, large.height});
    const std::vector<unsigned char> pixels(40 * 40 * 4, 200);
    const OverlayLayer::Area all[] = {{0, 0, 40, 40}}, upperHalf[] = {{0, 0, 40, 20}};
    OverlayLayer wash, bitmap;
    wash.place = {0, 700, 1240, 100};
    wash.wash = {{0, {0, 0, 0, 0}}, {1, {0, 0, 0, 0.5}}};
    bitmap.id = 1;
    bitmap.place = {30, 680, 40, 40};
    bitmap.pixels = pixels.data();
    bitmap.strideBytes = 160;
    bitmap.changes = bitmap.coverage = all;
    std::vector<OverlayLayer> layers{wash, bitmap};
    const auto draw = [&] {
        renderer->draw(shore.stage, large, window.framebuffer(), BuildMode::gradual);
        renderer->drawOverlay(layers);
        renderer->setPicturePreserved(true);
    };
    const auto changed = [&] {
        int sum = 0;
        for (const PixelRect& part : renderer->changes()) sum += part.width * part.height;
        return sum;
    };
    renderer->draw(shore.stage, large, window.framebuffer(), BuildMode::complete);
    // The water's strips come round again; a gradient drawn in parts may round differently from one drawn
    // whole.
    const auto expectWhole = [&](const char* when) {
        for (int i = 0; i < WaterLayer::mostStrips; ++i) draw();
        EXPECT_LT(changed(), large.width * large.height * 3 / 4) << when;
        const Image kept = renderer->readBack(large);
        renderer->setPicturePreserved(false);
        draw();
        EXPECT_EQ(changed(), large.width * large.height) << when;
        EXPECT_GE(psnr(kept, renderer->readBack(large)), 65) << when;
    };
    expectWhole("at rest");
    shore.rig->position += glm::dvec3(2, 0, 0.5);
    expectWhole("what moves moved");
    layers[1].changes = {};
    layers[1].place.x = 600;
    layers[1].opacity = 0.5;
    expectWhole("a layer moved and fades");
    layers[1].coverage = layers[1].changes = upperHalf;
    draw();
    layers[1].changes = {};
    layers[0].wash[1].colour.a = 0.25;
    expectWhole("a wash grew brighter");
    layers.pop_back();
    expectWhole("a layer went away");
    shore.camera->position += glm::dvec3(0.03, 0.04, 0.04);
    draw();
    EXPECT_EQ(changed(), large.width * large.height) << "a shake moves all";
    shore.camera->position -= glm::dvec3(0.03, 0.04, 0.04);
    expectWhole("after the shake");
}

}  // namespace gull::test
