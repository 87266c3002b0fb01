#include "Gullwick/Scene/SurfaceTextures.h"

#include "Engine/Raster/Canvas.h"
#include "Gullwick/Scene/FloatPlane.h"
#include "Gullwick/Scene/Noise.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace gull::SurfaceTextures {

namespace {

constexpr double pi = std::numbers::pi;

std::uint8_t byte(double value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0.0, 1.0) * 255 + 0.5);
}

/// White at this opacity, premultiplied.
void setWhite(std::uint8_t* pixel, double alpha) {
    std::fill(pixel, pixel + 4, byte(alpha));
}

/// A white picture whose opacity is alpha(distance of the pixel's centre from the picture's), in pixels.
template <typename Alpha>
Image radial(int size, Alpha alpha) {
    Image image(size, size);
    const double middle = size / 2.0;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            setWhite(image.at(x, y), alpha(std::hypot(x + 0.5 - middle, y + 0.5 - middle)));
        }
    }
    return image;
}

struct Grain {
    std::array<float, 3> colour;
    double alpha;
};

Grain drawGrain(Xorshift& draws) {
    const double kind = draws.unit();
    if (kind < 0.45) return {{0.62F, 0.56F, 0.48F}, 0.35 + 0.3 * draws.unit()};
    if (kind < 0.9) return {{1, 1, 1}, 0.3 + 0.4 * draws.unit()};
    if (kind < 0.96) return {{0.42F, 0.36F, 0.32F}, 0.6};
    return {{0.95F, 0.78F, 0.74F}, 0.75};
}

}  // namespace

Image sandDetail() {
    constexpr int size = 1024;
    FloatPlane red(size, size, 0.93F);
    FloatPlane green(size, size, 0.92F);
    FloatPlane blue(size, size, 0.9F);
    FloatPlane* const planes[] = {&red, &green, &blue};

    Xorshift draws(3);
    for (int i = 0; i < 260; ++i) {
        const float grey = draws.unit() < 0.5 ? 1.0F : 0.55F;
        const double radius = 20 + 60 * draws.unit();
        const double x = draws.unit() * size;
        const double y = draws.unit() * size;
        FloatPlane::disc(planes, {grey, grey, grey}, x, y, radius, 0.05, FloatPlane::Edge::soft, true);
    }
    for (int i = 0; i < 52000; ++i) {
        const Grain grain = drawGrain(draws);
        const double radius = 0.6 + 1.6 * draws.unit();
        const double x = draws.unit() * size;
        const double y = draws.unit() * size;
        FloatPlane::disc(planes, {grain.colour[0], grain.colour[1], grain.colour[2]}, x, y, radius,
                         grain.alpha, FloatPlane::Edge::hard, true);
    }

    Image image(size, size);
    for (int y = 0; y < size; ++y) {
        std::uint8_t* out = image.at(0, y);
        for (int c = 0; c < 3; ++c) {
            const float* in = planes[c]->row(y);
            for (int x = 0; x < size; ++x) out[4 * x + c] = static_cast<std::uint8_t>(in[x] * 255 + 0.5F);
        }
        for (int x = 0; x < size; ++x) out[4 * x + 3] = 255;
    }
    return image;
}

Image sandNormal() {
    constexpr int size = 512;
    Noise::Heights heights = Noise::grainHeights(size, 17, 1);
    // The phase of the ripples along u, split off so that each pixel needs no sine of its own:
    // sin(a + b) and sin(2a + 2b) from the sines and cosines of a (a row's) and b (a column's).
    std::array<double, size> sine{}, cosine{}, sine2{}, cosine2{};
    for (int x = 0; x < size; ++x) {
        const double u = static_cast<double>(x) / size;
        const double bend = 14 * pi * (0.035 * std::sin(4 * pi * u) + 0.02 * std::sin(10 * pi * u + 1.3));
        const auto i = static_cast<std::size_t>(x);
        sine[i] = std::sin(bend);
        cosine[i] = std::cos(bend);
        sine2[i] = std::sin(2 * bend);
        cosine2[i] = std::cos(2 * bend);
    }
    for (int y = 0; y < size; ++y) {
        const double phase = 14 * pi * y / size;
        const double s = std::sin(phase), c = std::cos(phase);
        const double s2 = std::sin(2 * phase), c2 = std::cos(2 * phase);
        float* row = &heights[static_cast<std::size_t>(y) * size];
        for (std::size_t x = 0; x < size; ++x) {
            // h = 0.7 ((sin X + 0.25 sin 2X) 0.32 + 0.5) + 0.3 g
            const double wave = s * cosine[x] + c * sine[x] + 0.25 * (s2 * cosine2[x] + c2 * sine2[x]);
            row[x] = static_cast<float>(0.7 * (wave * 0.32 + 0.5) + 0.3 * static_cast<double>(row[x]));
        }
    }
    return Noise::normalMap(heights, size, 2.2);
}

Image waterNormal() {
    constexpr int size = 512;
    Noise::Heights heights = Noise::grainHeights(size, 71, 6);
    for (int y = 0; y < size; ++y) {
        const double v = static_cast<double>(y) / size;
        float* row = &heights[static_cast<std::size_t>(y) * size];
        for (int x = 0; x < size; ++x) {
            const double u = static_cast<double>(x) / size;
            const double swell = 0.3 * std::sin(2 * pi * (3 * v + 0.2 * std::sin(2 * pi * u))) +
                                 0.15 * std::sin(2 * pi * (5 * v + 2 * u));
            row[x] = static_cast<float>(0.3 * (swell * 0.5 + 0.5) + 0.7 * static_cast<double>(row[x]));
        }
    }
    return Noise::normalMap(heights, size, 3);
}

Image waterColour(const BeachLook& look) {
    constexpr int width = 16;
    constexpr int height = 512;
    struct Stop {
        double at;
        RGB colour;
        double alpha;
    };
    const RGB shallow = look.water.mixed({0.55, 0.85, 0.82}, 0.45);
    const std::array<Stop, 4> stops{{{0, shallow, 0.35},
                                     {0.06, shallow, 0.55},
                                     {0.2, look.water, 0.9},
                                     {1, look.water.scaled(0.7), 0.97}}};
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        const double up = height - (y + 0.5);
        const double t = std::clamp((up - 51.2) / (512 - 51.2), 0.0, 1.0);
        std::size_t next = 1;
        while (next + 1 < stops.size() && t > stops[next].at) ++next;
        const Stop& a = stops[next - 1];
        const Stop& b = stops[next];
        const double f = (t - a.at) / (b.at - a.at);
        const RGB colour = a.colour.mixed(b.colour, f);
        const double alpha = a.alpha + (b.alpha - a.alpha) * f;
        const std::array<std::uint8_t, 4> pixel{byte(colour.r * alpha), byte(colour.g * alpha),
                                                byte(colour.b * alpha), byte(alpha)};
        for (int x = 0; x < width; ++x) std::copy(pixel.begin(), pixel.end(), image.at(x, y));
    }
    return image;
}

Image foam() {
    constexpr int width = 1024;
    constexpr int height = 128;
    FloatPlane cover(width, height, 0);
    FloatPlane* const planes[] = {&cover};
    Xorshift draws(11);
    for (int i = 0; i < 5200; ++i) {
        const double x = draws.unit() * width;
        const double q = std::pow(draws.unit(), 1.8);
        const double alpha = (1 - q) * (0.35 + 0.5 * draws.unit());
        const double radius = (1 - q) * 5 * draws.unit() + 1;
        FloatPlane::disc(planes, {1.0F}, x, height * (1 - q), radius, alpha, FloatPlane::Edge::hard, false);
    }
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        const double up = height - (y + 0.5);
        const double band = 0.85 * std::max(0.0, 1 - up / (0.22 * height));
        for (int x = 0; x < width; ++x) {
            const double bubbles = static_cast<double>(cover.row(y)[x]);
            setWhite(image.at(x, y), bubbles + (1 - bubbles) * band);
        }
    }
    return image;
}

Image ring() {
    return radial(256, [](double distance) {
        const double t = distance / 126;
        return t < 0.86 ? std::max(0.0, (t - 0.72) / 0.14) : std::max(0.0, 1 - (t - 0.86) / 0.14);
    });
}

Image arrow() {
    Canvas canvas(128, 384);
    canvas.flip();
    const std::array<std::pair<double, double>, 3> chevrons{{{80, 0.35}, {180, 0.65}, {280, 0.95}}};
    for (const auto& [y, alpha] : chevrons) {
        canvas.moveTo(20, y);
        canvas.lineTo(64, y + 44);
        canvas.lineTo(108, y);
        canvas.stroke({1, 1, 1, alpha}, 18, LineCap::round, LineJoin::round);
    }
    return canvas.image();
}

Image puff() {
    return radial(64, [](double distance) { return 0.9 * std::max(0.0, 1 - distance / 31); });
}

Image sparkle() {
    constexpr int size = 64;
    Canvas canvas(size, size);
    canvas.addRect({0, 0, size, size});
    canvas.fillRadial(32, 32, 0, 12, {{0, {1, 1, 1, 1}}, {1, {1, 1, 1, 0}}}, false);
    canvas.moveTo(32, 2);
    canvas.lineTo(32, 62);
    canvas.moveTo(2, 32);
    canvas.lineTo(62, 32);
    canvas.stroke({1, 1, 1, 0.9}, 2);
    return canvas.image();
}

}  // namespace gull::SurfaceTextures
