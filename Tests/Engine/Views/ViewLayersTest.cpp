#include "Engine/Views/ViewLayers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <string>

namespace gull {
namespace {

constexpr double width = 300;
constexpr double height = 200;
constexpr Colour ink{1, 0.9, 0.7, 0.8};

/// Overlapping, translucent, shadowed and scaled parts on three layers, of which some move with `step`.
Drawing scene(int step, double scale) {
    Font font;
    font.size = 15;
    View words = text("step " + std::to_string(step), font, ink).shadowed({0, 0, 0, 0.5}, 6);
    View bar = shape(capsule().filled(ink)).framed(20.0 + 13 * step, 5, Place::start);
    View card = text("card", font, ink)
                    .padded(20, 10)
                    .behind(shape(roundedRectangle(8).filled({0.1, 0.2, 0.3, 0.6}).stroked(ink)))
                    .faded(step % 3 == 0 ? 1.0 : 0.4 * (step % 3))
                    .scaled(1 + 0.05 * (step % 2));
    std::vector<View> parts = views(
        shape(rectangle().filled({{0, {0.4, 0, 0, 0.5}}, {0.5, {0.4, 0, 0, 0.1}}, {1, {0, 0.3, 0, 0.1}}}))
            .framed(width, 60)
            .offset(0, -70)
            .onLayer("wash", step < 5 ? 1 : 0.6),
        column(4, Place::end, views(std::move(words), std::move(bar)))
            .shadowed({0, 0, 0, 0.6}, 5)
            .offset(-60, -50),
        std::move(card).offset(30, 40).onLayer("card", 0.2 * step, 0, -7.3 * step));
    if (step >= 4) parts.push_back(shape(capsule().filled({1, 0, 0, 0.5})).framed(60, 60).offset(50, 20));
    return Drawing(layers(std::move(parts)).framed(width, height), width, height, scale);
}

/// A viewer of the layers: fetches only what changed, reads only where there is something, and blends.
struct Screen {
    struct Fetched {
        int width = 0;
        std::vector<unsigned char> bytes;
    };
    std::map<int, Fetched> fetched;
    long long fetchedPixels = 0;

    using Pixel = std::array<double, 4>;
    std::vector<Pixel> show(const std::vector<OverlayLayer>& layers, int w, int h) {
        std::vector<Pixel> picture(static_cast<std::size_t>(w * h), Pixel{});
        fetchedPixels = 0;
        for (const OverlayLayer& layer : layers) {
            if (!layer.isWash()) fetch(layer);
            for (int y = 0; y < layer.place.height; ++y) {
                for (int x = 0; x < layer.place.width; ++x) {
                    const int px = layer.place.x + x;
                    const int py = layer.place.y + y;
                    if (px < 0 || py < 0 || px >= w || py >= h) continue;
                    over(picture[static_cast<std::size_t>(py * w + px)],
                         layer.isWash() ? washAt(layer, y) : bitmapAt(layer, x, y), layer.opacity);
                }
            }
        }
        return picture;
    }

  private:
    void fetch(const OverlayLayer& layer) {
        Fetched& own = fetched[layer.id];
        const auto bytes = static_cast<std::size_t>(layer.place.width * layer.place.height * 4);
        if (own.width != layer.place.width || own.bytes.size() != bytes) {
            own = {layer.place.width, std::vector<unsigned char>(bytes, 77)};
        }
        for (const OverlayLayer::Area& area : layer.changes) {
            fetchedPixels += static_cast<long long>(area.width) * area.height;
            for (int y = area.y; y < area.y + area.height; ++y) {
                const unsigned char* row = layer.pixels + y * layer.strideBytes;
                std::copy(row + area.x * 4, row + (area.x + area.width) * 4,
                          own.bytes.begin() + (y * own.width + area.x) * 4);
            }
        }
    }
    Pixel bitmapAt(const OverlayLayer& layer, int x, int y) const {
        const bool isCovered =
            std::any_of(layer.coverage.begin(), layer.coverage.end(), [=](const OverlayLayer::Area& area) {
                return x >= area.x && x < area.x + area.width && y >= area.y && y < area.y + area.height;
            });
        Pixel pixel{};
        if (!isCovered) return pixel;
        const Fetched& own = fetched.at(layer.id);
        for (std::size_t c = 0; c < 4; ++c) {
            pixel[c] = own.bytes[static_cast<std::size_t>((y * own.width + x) * 4) + c];
        }
        return pixel;
    }
    static Pixel washAt(const OverlayLayer& layer, int y) {
        const double at = (y + 0.5) / layer.place.height;
        std::size_t i = 0;
        while (i + 2 < layer.wash.size() && at > layer.wash[i + 1].offset) ++i;
        const GradientStop& a = layer.wash[i];
        const GradientStop& b = layer.wash[i + 1];
        const double t = (at - a.offset) / (b.offset - a.offset);
        const auto mix = [t](double from, double to) { return 255 * (from + (to - from) * t); };
        return {mix(a.colour.b * a.colour.a, b.colour.b * b.colour.a),
                mix(a.colour.g * a.colour.a, b.colour.g * b.colour.a),
                mix(a.colour.r * a.colour.a, b.colour.r * b.colour.a), mix(a.colour.a, b.colour.a)};
    }
    static void over(Pixel& below, const Pixel& above, double opacity) {
        const double rest = 1 - above[3] / 255 * opacity;
        for (std::size_t c = 0; c < 4; ++c) below[c] = below[c] * rest + above[c] * opacity;
    }
};

TEST(ViewLayers, ShowWhatTheWholeDrawingShows) {
    for (const double scale : {1.0, 1.25, 2.0}) {
        ViewLayers kept;
        Screen screen;
        for (int step = 0; step < 8; ++step) {
            // In the end everything comes back as it was before.
            const Drawing drawing = scene(step == 7 ? 1 : step, scale);
            Canvas whole(width, height, scale);
            drawing.draw(whole);
            kept.show(drawing, width, height, scale);
            const auto picture = screen.show(kept.layers(), whole.pixelWidth(), whole.pixelHeight());
            double worst = 0;
            for (int y = 0; y < whole.pixelHeight(); ++y) {
                for (int x = 0; x < whole.pixelWidth(); ++x) {
                    const auto at = static_cast<std::size_t>(y * whole.pixelWidth() + x);
                    for (std::size_t c = 0; c < 4; ++c) {
                        const double own =
                            whole.pixels()[y * whole.strideBytes() + x * 4 + static_cast<int>(c)];
                        worst = std::max(worst, std::abs(own - picture[at][c]));
                    }
                }
            }
            // Every layer rounds; a shadow blurred in parts may differ by a step, too.
            EXPECT_LE(worst, 3.5) << "scale " << scale << ", step " << step;
        }
    }
}

/// A card that fades, moves, goes and comes back.
Drawing fadingCard(double opacity, double lift, const char* words) {
    Font font;
    View card = text(words, font, ink)
                    .padded(40, 30)
                    .behind(shape(roundedRectangle(8).filled({0, 0, 0, 0.7})))
                    .onLayer("card", opacity, 0, -lift);
    View backdrop = shape(rectangle().filled(ink)).framed(width, height).onLayer("backdrop", opacity);
    return Drawing(layers(views(std::move(backdrop), std::move(card))).framed(width, height), width, height,
                   1);
}

TEST(ViewLayers, FadingMovingAndComingBackDrawNothing) {
    ViewLayers kept;
    Screen screen;
    const auto fetched = [&](const Drawing& drawing) {
        kept.show(drawing, width, height, 1);
        screen.show(kept.layers(), 300, 200);
        return screen.fetchedPixels;
    };
    EXPECT_GT(fetched(fadingCard(0.1, 0, "card")), 0);
    ASSERT_EQ(kept.layers().size(), 2U);
    EXPECT_TRUE(kept.layers()[0].isWash()) << "a plain rectangle needs no bitmap";
    EXPECT_LT(kept.layers()[1].place.height, 100) << "as large as the card, not as the window";
    const unsigned char* pixels = kept.layers()[1].pixels;
    const int top = kept.layers()[1].place.y;
    EXPECT_EQ(fetched(fadingCard(0.7, 24, "card")), 0);
    EXPECT_EQ(kept.layers()[1].place.y, top - 24);
    EXPECT_EQ(kept.layers()[1].opacity, 0.7);
    EXPECT_EQ(fetched(fadingCard(0, 0, "card")), 0);
    EXPECT_TRUE(kept.layers().empty());
    EXPECT_EQ(fetched(fadingCard(1, 0, "card")), 0) << "as it was when it went";
    const long long redrawn = fetched(fadingCard(1, 0, "cord"));
    EXPECT_GT(redrawn, 0) << "its words alone";
    EXPECT_LT(redrawn, 60 * 40);
    EXPECT_EQ(kept.layers()[1].pixels, pixels) << "on the bitmap that was there";
    kept.showAgain();
    screen.show(kept.layers(), 300, 200);
    EXPECT_EQ(screen.fetchedPixels, 0);
}

TEST(ViewLayers, AnotherDensityIsDrawnAnew) {
    ViewLayers layers;
    layers.show(scene(3, 1), width, height, 1);
    const OverlayLayer::Area before = layers.layers().back().place;
    layers.show(scene(3, 2), width, height, 2);
    const OverlayLayer& after = layers.layers().back();
    EXPECT_NEAR(after.place.width, 2 * before.width, 32);
    ASSERT_EQ(after.changes.size(), 1U);
    EXPECT_EQ(after.changes[0].width, after.place.width);
    EXPECT_EQ(after.changes[0].x, 0);
}

}  // namespace
}  // namespace gull
