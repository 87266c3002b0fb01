#include "Engine/Views/ViewSurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace gull {
namespace {

constexpr double width = 300;
constexpr double height = 200;

/// Overlapping, translucent, shadowed and scaled parts, of which some move with `step`.
Drawing scene(int step, double scale) {
    Font font;
    font.size = 15;
    const Colour ink{1, 0.9, 0.7, 0.8};
    View words = text("step " + std::to_string(step), font, ink).shadowed({0, 0, 0, 0.5}, 6);
    View bar = shape(capsule().filled(ink)).framed(20.0 + 13 * step, 5, Place::start);
    View card = text("card", font, ink)
                    .padded(20, 10)
                    .behind(shape(roundedRectangle(8).filled({0.1, 0.2, 0.3, 0.6}).stroked(ink)))
                    .faded(step % 3 == 0 ? 1.0 : 0.4 * (step % 3))
                    .scaled(1 + 0.05 * (step % 2));
    std::vector<View> parts = views(
        shape(rectangle().filled({{0, {0, 0, 0, 0.5}}, {1, {0, 0, 0, 0}}})).framed(width, 60).offset(0, -70),
        column(4, Place::end, views(std::move(words), std::move(bar)))
            .shadowed({0, 0, 0, 0.6}, 5)
            .offset(-60, -50),
        std::move(card).offset(30, 40));
    if (step >= 4) parts.push_back(shape(capsule().filled({1, 0, 0, 0.5})).framed(60, 60).offset(50, 20));
    return Drawing(layers(std::move(parts)).framed(width, height), width, height, scale);
}

TEST(ViewSurface, DrawsOnlyWhatChangedAndEndsUpTheSame) {
    for (const double scale : {1.0, 1.25, 2.0}) {
        ViewSurface kept;
        for (int step = 0; step < 7; ++step) {
            kept.show(scene(step, scale), width, height, scale);
            ViewSurface fresh;
            fresh.show(scene(step, scale), width, height, scale);
            const Image a = kept.canvas()->image();
            const Image b = fresh.canvas()->image();
            int worst = 0;
            for (std::size_t i = 0; i < a.pixels.size(); ++i) {
                worst = std::max(worst, std::abs(a.pixels[i] - b.pixels[i]));
            }
            // A shadow that is blurred in parts may round differently by a step.
            EXPECT_LE(worst, 2) << "scale " << scale << ", step " << step;
        }
    }
}

TEST(ViewSurface, TellsWhatChangedAndWhereThereIsAnything) {
    ViewSurface surface;
    surface.show(scene(0, 1), width, height, 1);
    ASSERT_EQ(surface.changes().size(), 1U);
    EXPECT_EQ(surface.changes()[0], (ViewSurface::Area{0, 0, 300, 200}));
    surface.show(scene(0, 1), width, height, 1);
    EXPECT_TRUE(surface.changes().empty());
    surface.show(scene(2, 1), width, height, 1);
    ASSERT_FALSE(surface.changes().empty());
    long long redrawn = 0;
    for (const ViewSurface::Area& area : surface.changes()) redrawn += area.width * area.height;
    EXPECT_LT(redrawn, 300 * 200 / 2);

    const Image picture = surface.canvas()->image();
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (picture.at(x, y)[3] == 0) continue;
            bool covered = false;
            for (const ViewSurface::Area& area : surface.coverage()) {
                covered = covered ||
                          (x >= area.x && x < area.x + area.width && y >= area.y && y < area.y + area.height);
            }
            ASSERT_TRUE(covered) << x << ", " << y;
        }
    }
}

TEST(ViewSurface, AnotherSizeOrDensityIsDrawnWhole) {
    ViewSurface surface;
    surface.show(scene(0, 1), width, height, 1);
    surface.show(scene(0, 2), width, height, 2);
    EXPECT_EQ(surface.canvas()->pixelWidth(), 600);
    EXPECT_EQ(surface.changes()[0], (ViewSurface::Area{0, 0, 600, 400}));
}

}  // namespace
}  // namespace gull
