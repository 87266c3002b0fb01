#include "Gullwick/Scene/ItemFaces.h"

#include "Engine/Raster/Canvas.h"
#include "Engine/Raster/Text.h"
#include "Gullwick/Scene/Noise.h"

#include <array>
#include <cmath>
#include <numbers>

namespace gull::ItemFaces {

namespace {

constexpr double pi = std::numbers::pi;
constexpr int faceSize = 256;
constexpr double middle = faceSize / 2.0;

Colour grey(double value) {
    return {value, value, value, 1};
}

/// Draws text with its capitals centred on (x, y). `capHeight` is their height as a share of the font size.
void drawCentred(Canvas& canvas, const char* text, const TextStyle& style, const Colour& colour, double x,
                 double y, double capHeight) {
    const TextSize size = measureText(text, style);
    const double top = y + style.font.size * capHeight / 2 - size.baseline;
    drawText(canvas, text, style, colour, x - size.width / 2, top);
}

/// A line along the direction `angle` (clockwise from the top) between two distances from the middle.
void addSpoke(Canvas& canvas, double angle, double from, double to) {
    const double dx = std::sin(angle);
    const double dy = -std::cos(angle);
    canvas.moveTo(middle + from * dx, middle + from * dy);
    canvas.lineTo(middle + to * dx, middle + to * dy);
}

Noise::Heights doubloonRelief() {
    Canvas canvas(faceSize, faceSize);
    canvas.addRect({0, 0, faceSize, faceSize});
    canvas.fill(grey(0.35));
    canvas.addEllipse({10, 10, 236, 236});
    canvas.fill(grey(0.85));
    canvas.addEllipse({26, 26, 204, 204});
    canvas.fill(grey(0.45));

    constexpr int beads = 56;
    constexpr double beadRing = 94;
    for (int i = 0; i < beads; ++i) {
        const double angle = 2 * pi * i / beads;
        canvas.addEllipse(
            {middle + beadRing * std::cos(angle) - 4, middle + beadRing * std::sin(angle) - 4, 8, 8});
    }
    canvas.fill(grey(0.9));

    // A cross whose arms end in double serifs.
    canvas.addRect({114, 58, 28, 140});
    canvas.addRect({58, 114, 140, 28});
    for (const double along : {50.0, 78.0, 162.0, 190.0}) {
        canvas.addRect({106, along, 44, 16});
        canvas.addRect({along, 106, 16, 44});
    }
    canvas.fill(grey(0.9));
    return Noise::luminance(canvas.image(), faceSize);
}

}  // namespace

Image doubloonColour() {
    const Noise::Heights relief = doubloonRelief();
    Image image(faceSize, faceSize);
    std::uint8_t* out = image.pixels.data();
    for (const float height : relief) {
        const double h = static_cast<double>(height);
        for (const double value : {0.62 + 0.38 * h, 0.42 + 0.42 * h, 0.12 + 0.3 * h, 1.0}) {
            *out++ = static_cast<std::uint8_t>(value * 255 + 0.5);
        }
    }
    return image;
}

Image doubloonNormal() {
    return Noise::normalMap(Noise::blurred(doubloonRelief(), faceSize), faceSize, 6);
}

Image watchDial() {
    constexpr Colour ink{0.15, 0.12, 0.1};
    Canvas canvas(faceSize, faceSize);
    canvas.addRect({0, 0, faceSize, faceSize});
    canvas.fill({0.97, 0.94, 0.86});
    canvas.addEllipse({14, 14, 228, 228});
    canvas.stroke(ink, 3);

    // The minute track: a thin ring with a tick per minute, every fifth one heavier.
    canvas.addEllipse({middle - 102, middle - 102, 204, 204});
    canvas.stroke(ink, 1);
    for (int minute = 0; minute < 60; ++minute) {
        addSpoke(canvas, 2 * pi * minute / 60, 102, minute % 5 == 0 ? 110 : 107);
        canvas.stroke(ink, minute % 5 == 0 ? 2.4 : 1.1);
    }

    constexpr std::array<const char*, 12> numerals{"XII", "I",   "II",   "III", "IIII", "V",
                                                   "VI",  "VII", "VIII", "IX",  "X",    "XI"};
    const TextStyle style{.font = {.size = 24, .design = FontDesign::serif, .family = "Times New Roman"}};
    for (std::size_t hour = 0; hour < numerals.size(); ++hour) {
        canvas.save();
        canvas.translate(middle, middle);
        canvas.rotate(2 * pi * static_cast<double>(hour) / 12);
        drawCentred(canvas, numerals[hour], style, ink, 0, -87, 0.66);
        canvas.restore();
    }

    const double hourHand = 2 * pi * (10 + 10 / 60.0) / 12;
    const double minuteHand = 2 * pi * 10 / 60;
    addSpoke(canvas, hourHand, -12, 48);
    canvas.stroke(ink, 6, LineCap::round);
    addSpoke(canvas, minuteHand, -16, 74);
    canvas.stroke(ink, 4, LineCap::round);
    canvas.addEllipse({121, 121, 14, 14});
    canvas.fill(grey(0.1));
    return canvas.image();
}

Image compassRose() {
    constexpr Colour paper{0.93, 0.88, 0.76};
    constexpr Colour ink{0.25, 0.18, 0.12};
    constexpr Colour shade{0.72, 0.62, 0.47};
    Canvas canvas(faceSize, faceSize);
    canvas.addRect({0, 0, faceSize, faceSize});
    canvas.fill(paper);
    canvas.addEllipse({20, 20, 216, 216});
    canvas.stroke(ink, 2);
    canvas.addEllipse({40, 40, 176, 176});
    canvas.stroke(ink, 2);
    for (int i = 0; i < 72; ++i) {
        addSpoke(canvas, 2 * pi * i / 72, i % 6 == 0 ? 96 : 102, 108);
        canvas.stroke(ink, i % 6 == 0 ? 1.8 : 1);
    }

    // Eight points, the four between first: each a quadrilateral from the centre by its shoulders to its tip,
    // one half dark, one light, as if folded.
    auto point = [&](double angle, double length, double shoulder) {
        auto place = [&](double turn, double distance) {
            return std::pair{middle + distance * std::sin(angle + turn),
                             middle - distance * std::cos(angle + turn)};
        };
        const auto [tx, ty] = place(0, length);
        const auto [lx, ly] = place(-pi / 4, shoulder);
        const auto [rx, ry] = place(pi / 4, shoulder);
        canvas.moveTo(middle, middle);
        canvas.lineTo(lx, ly);
        canvas.lineTo(tx, ty);
        canvas.lineTo(rx, ry);
        canvas.closePath();
        canvas.fill(ink);
        canvas.moveTo(middle, middle);
        canvas.lineTo(rx, ry);
        canvas.lineTo(tx, ty);
        canvas.closePath();
        canvas.fill(shade);
        canvas.moveTo(middle, middle);
        canvas.lineTo(lx, ly);
        canvas.lineTo(tx, ty);
        canvas.lineTo(rx, ry);
        canvas.closePath();
        canvas.stroke(ink, 1.2, LineCap::round, LineJoin::round);
    };
    for (int i = 0; i < 4; ++i) point(pi / 4 + i * pi / 2, 62, 17);
    for (int i = 0; i < 4; ++i) point(i * pi / 2, 84, 21);
    canvas.addEllipse({middle - 5, middle - 5, 10, 10});
    canvas.fill(paper);
    canvas.addEllipse({middle - 5, middle - 5, 10, 10});
    canvas.stroke(ink, 1.5);

    // The ring makes room for its letter.
    const double letterY = faceSize - 230;
    canvas.addEllipse({middle - 15, letterY - 14, 30, 28});
    canvas.fill(paper);
    const TextStyle style{.font = {.size = 26,
                                   .weight = FontWeight::bold,
                                   .design = FontDesign::serif,
                                   .family = "Times New Roman"}};
    drawCentred(canvas, "N", style, {0.6, 0.1, 0.08}, middle, letterY, 0.66);
    return canvas.image();
}

Image canLabel() {
    constexpr double width = 512;
    constexpr double height = 256;
    constexpr Colour white{1, 1, 1};
    Canvas canvas(width, height);
    canvas.addRect({0, 0, width, height});
    canvas.fill({0.72, 0.08, 0.1});
    for (const double y : {0.0, height - 22}) {
        canvas.addRect({0, y, width, 22});
        canvas.fill({0.82, 0.82, 0.84});
    }

    // A wave all the way round, twice up and down, so that its ends meet behind.
    auto addWave = [&](double y, double swing, double shift) {
        canvas.moveTo(-8, y + swing * std::sin((-8 + shift) / 256 * 2 * pi));
        for (double x = -4; x <= width + 8; x += 4) {
            canvas.lineTo(x, y + swing * std::sin((x + shift) / 256 * 2 * pi));
        }
    };
    addWave(176, 24, 70);
    canvas.stroke(white.withAlpha(0.9), 10, LineCap::round, LineJoin::round);
    addWave(193, 24, 84);
    canvas.stroke(white.withAlpha(0.45), 4, LineCap::round, LineJoin::round);

    const TextStyle style{
        .font = {.size = 54, .weight = FontWeight::bold, .design = FontDesign::proportional, .italic = true}};
    for (const double x : {150.0, 406.0}) drawCentred(canvas, "FIZZ", style, white, x, height - 150, 0.727);
    return canvas.image();
}

}  // namespace gull::ItemFaces
