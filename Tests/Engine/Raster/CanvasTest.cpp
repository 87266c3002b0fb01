#include "Engine/Raster/Canvas.h"

#include "Engine/Raster/Resample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace gull {
namespace {

const Colour black{0, 0, 0, 1};
const Colour white{1, 1, 1, 1};

int alpha(const Image& image, int x, int y) {
    return image.at(x, y)[3];
}

TEST(Canvas, AShadowIsSoftAndAsWideAsItsRadius) {
    Canvas canvas(200, 200);
    canvas.beginShadow({0, 0, 0, 1}, 16, 0, 0);
    canvas.addRect({60, 60, 80, 80});
    canvas.fill(white);
    canvas.endShadow();
    const Image image = canvas.image();
    // A gaussian of deviation 8 about an edge: 1/2 at the edge, then falling like its integral.
    auto expected = [](double distance) { return 255 * 0.5 * std::erfc(distance / (8 * std::sqrt(2.0))); };
    for (const int distance : {1, 4, 8, 12, 16, 20}) {
        EXPECT_NEAR(alpha(image, 140 + distance, 100), expected(distance + 0.5), 6) << distance;
        EXPECT_EQ(alpha(image, 140 + distance, 100), alpha(image, 59 - distance, 100)) << distance;
        EXPECT_EQ(alpha(image, 100, 140 + distance), alpha(image, 140 + distance, 100)) << distance;
    }
    EXPECT_EQ(alpha(image, 175, 100), 0);
    EXPECT_EQ(image.at(100, 100)[0], 255);  // the shape itself lies on top
}

TEST(Canvas, AShadowIsOffsetCutByTheClipAndTheSameAtTheSecondDrawing) {
    auto draw = [](Canvas& canvas) {
        canvas.clear();
        canvas.save();
        canvas.clip({0, 0, 100, 70});
        canvas.beginShadow({1, 0, 0, 0.5}, 6, 0, 30);
        canvas.addRect({30, 20, 40, 20});
        canvas.fill(white);
        canvas.endShadow();
        canvas.restore();
    };
    Canvas canvas(100, 100);
    draw(canvas);
    const Image first = canvas.image();
    EXPECT_NEAR(first.at(50, 58)[0], 128, 3);
    EXPECT_EQ(first.at(50, 58)[1], 0);
    EXPECT_EQ(alpha(first, 50, 72), 0);
    draw(canvas);
    EXPECT_EQ(canvas.image(), first);
}

TEST(Canvas, ALayerMixesItsPartsAsOnePicture) {
    Canvas canvas(40, 40);
    canvas.beginLayer(0.5);
    canvas.addRect({0, 0, 30, 30});
    canvas.fill(white);
    canvas.addRect({10, 10, 30, 30});
    canvas.fill(white);
    canvas.endLayer();
    EXPECT_NEAR(alpha(canvas.image(), 20, 20), 128, 1);
    EXPECT_NEAR(alpha(canvas.image(), 5, 5), 128, 1);

    // Layers and shadows nest, and the drawing state afterwards is the same as before.
    canvas.clear();
    canvas.translate(5, 0);
    canvas.beginLayer(0.5);
    canvas.translate(100, 100);
    canvas.beginShadow(black, 4);
    canvas.addRect({-100, -100, 10, 10});
    canvas.fill(white);
    canvas.endShadow();
    canvas.endLayer();
    canvas.addRect({15, 0, 5, 5});
    canvas.fill(white);
    EXPECT_NEAR(canvas.image().at(10, 5)[0], 128, 1);
    EXPECT_EQ(alpha(canvas.image(), 22, 2), 255);
}

TEST(Canvas, RoundedCornersBeginWithoutCurvature) {
    Canvas canvas(100, 100);
    canvas.addRoundedRect({0, 0, 100, 100}, 30);
    canvas.fill(white);
    const Image image = canvas.image();
    EXPECT_EQ(alpha(image, 0, 0), 0);
    EXPECT_EQ(alpha(image, 50, 0), 255);
    // Where a circle's arc would just begin, a continuous corner has already left the edge a little.
    EXPECT_LT(alpha(image, 31, 0), 255);
    EXPECT_EQ(image, [] {
        Canvas mirrored(100, 100);
        mirrored.translate(100, 100);
        mirrored.rotate(std::acos(-1.0));
        mirrored.addRoundedRect({0, 0, 100, 100}, 30);
        mirrored.fill(white);
        return mirrored.image();
    }());

    // A capsule's ends are half circles; a larger radius than fits changes nothing.
    Canvas capsule(80, 20);
    capsule.addRoundedRect({0, 0, 80, 20}, 10);
    capsule.fill(white);
    Canvas more(80, 20);
    more.addRoundedRect({0, 0, 80, 20}, 99);
    more.fill(white);
    EXPECT_EQ(capsule.image(), more.image());
    const Image ends = capsule.image();
    double area = 0;
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 80; ++x) area += alpha(ends, x, y) / 255.0;
    }
    EXPECT_NEAR(area, 60 * 20 + std::acos(-1.0) * 100, 1.5);
}

TEST(Canvas, ScaleFlipAndBlendModes) {
    Canvas canvas(10.5, 4, 2);
    EXPECT_EQ(canvas.pixelWidth(), 21);
    EXPECT_EQ(canvas.pixelHeight(), 8);
    canvas.flip();
    canvas.addRect({0, 0, 1, 1});
    canvas.fill(white);
    EXPECT_EQ(alpha(canvas.image(), 0, 7), 255);
    EXPECT_EQ(alpha(canvas.image(), 0, 0), 0);

    auto mixed = [](BlendMode mode) {
        Canvas c(1, 1);
        c.addRect({0, 0, 1, 1});
        c.fill({0.4, 0.4, 0.4, 1});
        c.setBlendMode(mode);
        c.addRect({0, 0, 1, 1});
        c.fill({0.6, 0.6, 0.6, 1});
        return c.image().at(0, 0)[0];
    };
    EXPECT_NEAR(mixed(BlendMode::normal), 153, 1);
    EXPECT_NEAR(mixed(BlendMode::multiply), 61, 1);
    EXPECT_NEAR(mixed(BlendMode::screen), 194, 1);
    EXPECT_NEAR(mixed(BlendMode::darken), 102, 1);
    EXPECT_NEAR(mixed(BlendMode::add), 255, 1);
}

TEST(Canvas, ImagesKeepTheirMeanWhenTheyShrink) {
    Image checks(160, 160);
    for (int y = 0; y < 160; ++y) {
        for (int x = 0; x < 160; ++x) {
            const auto value = static_cast<std::uint8_t>((x + y) % 2 == 0 ? 255 : 0);
            std::fill(checks.at(x, y), checks.at(x, y) + 4, value);
        }
    }
    const Image small = resampled(checks, 42, 42);
    for (int y = 0; y < 42; ++y) {
        for (int x = 0; x < 42; ++x) ASSERT_NEAR(small.at(x, y)[0], 128, 12) << x << "," << y;
    }
    Canvas canvas(60, 60);
    canvas.drawImage(checks, {10, 10, 42, 42}, 0.5);
    EXPECT_NEAR(alpha(canvas.image(), 30, 30), 64, 7);
    EXPECT_EQ(alpha(canvas.image(), 53, 30), 0);
    EXPECT_EQ(resampled(checks, 160, 160), checks);
}

TEST(CanvasDeathTest, EndsOnlyWhatWasBegun) {
    Canvas canvas(4, 4);
    canvas.beginLayer(1);
    EXPECT_DEATH(canvas.endShadow(), "end of a shadow");
    EXPECT_DEATH(Canvas(-5, 4), "no bitmap of -5 by 4");
}

}  // namespace
TEST(Canvas, crossedGradientsMultiplyTheirOpacities) {
    Canvas canvas(100, 100);
    canvas.addRect({0, 0, 100, 100});
    const auto black = [](double alpha) { return Colour{0, 0, 0, alpha}; };
    canvas.fillCrossed({0, 0, 100, 100}, {{0, black(1)}, {1, black(0)}}, {{0, black(0)}, {1, black(1)}});
    const Image image = canvas.image();
    EXPECT_NEAR(image.at(50, 50)[3], 64, 3);
    EXPECT_NEAR(image.at(90, 10)[3], 207, 4);
    EXPECT_NEAR(image.at(2, 2)[3], 6, 3);
    EXPECT_NEAR(image.at(97, 97)[3], 6, 3);
}

}  // namespace gull
