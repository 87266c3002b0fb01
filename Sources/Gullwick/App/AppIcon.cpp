#include "Gullwick/App/AppIcon.h"

#include "Engine/Files/SmallFile.h"
#include "Engine/Log/Log.h"
#include "Engine/Raster/Canvas.h"
#include "Engine/Raster/Png.h"
#include "Engine/Raster/Svg.h"

#include <fmt/format.h>

#include <numbers>
#include <string_view>

#ifndef GULL_APP_ID
#define GULL_APP_ID "gullwick"
#endif

namespace gull {

namespace {

constexpr double side = 128;  // the drawing's own unit is a 128th of the icon

constexpr Colour ink{0.07, 0.10, 0.12, 1};
constexpr Colour grip{0.95, 0.36, 0.22, 1};
constexpr Colour foam{0.96, 0.99, 0.97, 1};
constexpr Colour signal{0.10, 0.62, 0.60, 1};

/// The differences between an icon in a list and one that is looked at.
struct Proportions {
    double inset, corner;  ///< of the tile
    double ring;           ///< width of the coil
    double coin;           ///< radius
    double shaft, handle;  ///< widths
    bool isDetailed;
};
constexpr Proportions large{4, 30, 9, 23, 7, 13, true};
constexpr Proportions small{0, 26, 13, 25, 12, 19, false};
constexpr int smallUpTo = 32;  // pixels

struct Ellipse {
    double x, y, rx, ry;
    Rect box() const { return {x - rx, y - ry, 2 * rx, 2 * ry}; }
};
constexpr Ellipse coil{51, 59, 37, 15};
constexpr struct { double x = 70, y = 103; } coin;

void drawBeach(Canvas& canvas, const Proportions& p) {
    const double extent = side - 2 * p.inset;
    canvas.addRoundedRect({p.inset, p.inset, extent, extent}, p.corner);
    canvas.clipPath();
    canvas.addRect({0, 0, side, 60});
    canvas.fillLinear(0, 0, 0, 48, {{0, {0.03, 0.25, 0.36, 1}}, {1, {0.16, 0.70, 0.70, 1}}});

    const auto shore = [&](double y) {
        canvas.moveTo(0, y + 5);
        canvas.curveTo(26, y - 9, 44, y + 9, 70, y);
        canvas.curveTo(92, y - 8, 108, y + 3, side, y - 6);
    };
    shore(38);
    canvas.lineTo(side, side);
    canvas.lineTo(0, side);
    canvas.closePath();
    canvas.fillLinear(0, 34, 0, side, {{0, {0.99, 0.90, 0.70, 1}}, {1, {0.89, 0.67, 0.42, 1}}});
    shore(38);
    canvas.stroke(foam, p.isDetailed ? 5 : 7);
    if (!p.isDetailed) return;
    shore(25);
    canvas.stroke(foam.withAlpha(0.35), 2.5, LineCap::round);
}

/// Half buried, with the sand it pushed up in front.
void drawCoin(Canvas& canvas, const Proportions& p) {
    const double r = p.coin;
    const auto disc = [&](double dx, double dy, double radius) {
        canvas.addEllipse({coin.x + dx - radius, coin.y + dy - radius, 2 * radius, 2 * radius});
    };
    canvas.addEllipse({coin.x - r * 1.5, coin.y + 2, r * 3, r * 0.9});
    canvas.fill({0.66, 0.44, 0.24, 1});
    if (p.isDetailed)
        disc(3, 1, r);
    else
        disc(0, 0, r + 4);
    canvas.fill({0.60, 0.33, 0.04, 1});
    disc(0, 0, r);
    canvas.fillLinear(coin.x - r, coin.y - r, coin.x + r, coin.y + r,
                      {{0, {1, 0.95, 0.58, 1}}, {0.5, {1, 0.78, 0.20, 1}}, {1, {0.93, 0.58, 0.08, 1}}});
    if (p.isDetailed) {
        disc(0, 0, r - 4.5);
        canvas.stroke({0.78, 0.47, 0.06, 1}, 2);
        canvas.addArc(coin.x, coin.y, r - 9, 3.5, 4.5);
        canvas.stroke(foam.withAlpha(0.9), 3, LineCap::round);
    }
    canvas.moveTo(coin.x - r * 1.7, side);
    canvas.curveTo(coin.x - r * 1.5, coin.y + 4, coin.x - r * 0.6, coin.y + 12, coin.x, coin.y + 11);
    canvas.curveTo(coin.x + r * 0.6, coin.y + 10, coin.x + r * 1.3, coin.y + 6, coin.x + r * 1.8, side);
    canvas.closePath();
    canvas.fillLinear(0, coin.y + 4, 0, side, {{0, {0.96, 0.79, 0.54, 1}}, {1, {0.89, 0.67, 0.42, 1}}});
}

/// The coil with its spokes, and from its hub the shaft up to the hand.
void drawDetector(Canvas& canvas, const Proportions& p) {
    if (p.isDetailed) {
        canvas.moveTo(coil.x - coil.rx, coil.y);
        canvas.lineTo(coil.x + coil.rx, coil.y);
        canvas.moveTo(coil.x - 8, coil.y - coil.ry);
        canvas.lineTo(coil.x + 8, coil.y + coil.ry);
        canvas.stroke(ink, 4);
    }
    canvas.addEllipse(coil.box());
    canvas.stroke(ink, p.ring);
    if (p.isDetailed) {
        canvas.addEllipse({coil.x - coil.rx, coil.y - coil.ry - 1.5, 2 * coil.rx, 2 * coil.ry});
        canvas.stroke({0.35, 0.42, 0.46, 1}, 2);
    }
    canvas.moveTo(coil.x, coil.y);
    canvas.lineTo(108, 18);
    canvas.stroke(ink, p.shaft, LineCap::round);
    canvas.moveTo(96, 27);
    canvas.lineTo(111, 15);
    canvas.stroke(grip, p.handle, LineCap::round);
}

void drawShadow(Canvas& canvas, const Proportions& p) {
    canvas.addEllipse({coil.x - coil.rx - 3, coil.y - coil.ry + 8, 2 * coil.rx, 2 * coil.ry});
    canvas.stroke(Colour{0.45, 0.26, 0.12, 0.35}, p.ring);
}

/// Arcs on both sides of the coin, below the coil.
void drawSignal(Canvas& canvas) {
    for (const double radius : {33.0, 43.0}) {
        for (const double middle : {-0.42, 0.42 - std::numbers::pi}) {
            canvas.addArc(coin.x, coin.y, radius, middle - 0.3, middle + 0.3);
            canvas.stroke(signal, 4.5, LineCap::round);
        }
    }
}

void draw(Canvas& canvas, const Proportions& p) {
    canvas.save();
    drawBeach(canvas, p);
    if (p.isDetailed) {
        drawShadow(canvas, p);
        drawSignal(canvas);
    }
    drawCoin(canvas, p);
    drawDetector(canvas, p);
    canvas.restore();
}

}  // namespace

Image AppIcon::image(int pixels) {
    Canvas canvas(side, side, pixels / side);
    draw(canvas, pixels <= smallUpTo ? small : large);
    return canvas.image();
}

std::string AppIcon::svg() {
    return drawnAsSvg(side, side, [](Canvas& canvas) { draw(canvas, large); });
}

std::string AppIcon::applicationId() {
    return GULL_APP_ID;
}

int AppIcon::write(const std::string& folder) {
    const auto writeOne = [&](const std::string& place, const char* suffix, std::string_view bytes) {
        const std::string path = fmt::format("{}/{}/apps/{}.{}", folder, place, applicationId(), suffix);
        if (const auto outcome = SmallFile::replace(path, bytes); !outcome) {
            Log::say("{} cannot be written: {}", path, outcome.failure);
            return false;
        }
        fmt::print("wrote {}\n", path);
        return true;
    };
    bool allWritten = writeOne("scalable", "svg", svg());
    for (const int size : sizes) {
        const auto png = encodePng(image(size));
        const std::string_view bytes =
            png ? std::string_view(reinterpret_cast<const char*>(png->data()), png->size())
                : std::string_view();
        allWritten &= writeOne(fmt::format("{0}x{0}", size), "png", bytes);
    }
    return allWritten ? 0 : 1;
}

}  // namespace gull
