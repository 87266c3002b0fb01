#include "Gullwick/Scene/SurfaceTextures.h"

#include "Engine/Raster/Canvas.h"
#include "Gullwick/Scene/FloatImage.h"
#include "Gullwick/Scene/Noise.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/vec2.hpp>
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

/// An angle as sine and cosine: if a phase is the sum of a row's and a column's, no pixel needs a sine of its
/// own.
struct Angle {
    double sine = 0;
    double cosine = 1;

    Angle() = default;
    explicit Angle(double radians) : sine(std::sin(radians)), cosine(std::cos(radians)) {}
    Angle operator+(const Angle& other) const {
        Angle sum;
        sum.sine = sine * other.cosine + cosine * other.sine;
        sum.cosine = cosine * other.cosine - sine * other.sine;
        return sum;
    }
};

/// The colour and alpha of a grain of sand; its position is drawn later.
FloatImage::Disc drawGrain(Xorshift& draws) {
    FloatImage::Disc grain;
    const double kind = draws.unit();
    if (kind < 0.45) {
        grain.colour = {0.62F, 0.56F, 0.48F, 1};
        grain.alpha = 0.35 + 0.3 * draws.unit();
    } else if (kind < 0.9) {
        grain.colour = {1, 1, 1, 1};
        grain.alpha = 0.3 + 0.4 * draws.unit();
    } else if (kind < 0.96) {
        grain.colour = {0.42F, 0.36F, 0.32F, 1};
        grain.alpha = 0.6;
    } else {
        grain.colour = {0.95F, 0.78F, 0.74F, 1};
        grain.alpha = 0.75;
    }
    return grain;
}

}  // namespace

Image sandDetail() {
    constexpr int size = 1024;
    constexpr std::size_t blotches = 260;
    constexpr std::size_t grains = 52000;
    std::vector<FloatImage::Disc> marks;
    marks.reserve(blotches + grains);
    Xorshift draws(3);
    while (marks.size() < blotches) {
        const float grey = draws.unit() < 0.5 ? 1.0F : 0.55F;
        FloatImage::Disc blotch{.colour = {grey, grey, grey, 1}, .alpha = 0.05, .soft = true};
        blotch.radius = 20 + 60 * draws.unit();
        blotch.x = draws.unit() * size;
        blotch.y = draws.unit() * size;
        marks.push_back(blotch);
    }
    while (marks.size() < blotches + grains) {
        FloatImage::Disc grain = drawGrain(draws);
        grain.radius = 0.6 + 1.6 * draws.unit();
        grain.x = draws.unit() * size;
        grain.y = draws.unit() * size;
        marks.push_back(grain);
    }
    return FloatImage::painted(size, size, {0.93F, 0.92F, 0.9F, 1}, marks);
}

Image sandNormal() {
    constexpr int size = 512;
    Noise::Heights heights = Noise::grainHeights(size, 17, 1);
    std::array<Angle, size> bend;
    for (std::size_t x = 0; x < size; ++x) {
        const double u = static_cast<double>(x) / size;
        bend[x] = Angle(14 * pi * (0.035 * std::sin(4 * pi * u) + 0.02 * std::sin(10 * pi * u + 1.3)));
    }
    for (std::size_t y = 0; y < size; ++y) {
        const Angle phase(14 * pi * static_cast<double>(y) / size);
        float* row = &heights[y * size];
        for (std::size_t x = 0; x < size; ++x) {
            // h = 0.7 ((sin X + 0.25 sin 2X) 0.32 + 0.5) + 0.3 g
            const Angle sum = phase + bend[x];
            const double wave = sum.sine + 0.25 * (2 * sum.sine * sum.cosine);
            row[x] = static_cast<float>(0.7 * (wave * 0.32 + 0.5) + 0.3 * static_cast<double>(row[x]));
        }
    }
    return Noise::normalMap(heights, size, 2.2);
}

Image waterNormal() {
    constexpr int size = 512;
    Noise::Heights heights = Noise::grainHeights(size, 71, 6);
    std::array<Angle, size> bend;
    std::array<Angle, size> slant;
    for (std::size_t x = 0; x < size; ++x) {
        const double u = static_cast<double>(x) / size;
        bend[x] = Angle(2 * pi * 0.2 * std::sin(2 * pi * u));
        slant[x] = Angle(2 * pi * 2 * u);
    }
    for (std::size_t y = 0; y < size; ++y) {
        const double v = static_cast<double>(y) / size;
        const Angle swell(2 * pi * 3 * v);
        const Angle cross(2 * pi * 5 * v);
        float* row = &heights[y * size];
        for (std::size_t x = 0; x < size; ++x) {
            const double waves = 0.3 * (swell + bend[x]).sine + 0.15 * (cross + slant[x]).sine;
            row[x] = static_cast<float>(0.3 * (waves * 0.5 + 0.5) + 0.7 * static_cast<double>(row[x]));
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

namespace {

/// Thinly spread foam forms a web: bubbles gather where two cells meet.
class FoamWeb {
  public:
    FoamWeb() {
        Xorshift draws(29);
        for (glm::dvec2& mesh : meshes_) mesh = glm::dvec2(draws.unit() * length, draws.unit() * depth);
    }
    /// Of `x` and a few more random places in the row `y`, the one closest to the border of a cell.
    /// Pixels.
    double nearest(double x, double y, Xorshift& draws) const {
        double best = x, least = inside(x, y);
        for (int i = 0; i < looks; ++i) {
            const double other = draws.unit() * pixelsAcross;
            const double here = inside(other, y);
            if (here < least) {
                least = here;
                best = other;
            }
        }
        return best;
    }

  private:
    static constexpr double length = 4,
                            depth = 1.5;  ///< of the picture, laid out as the shore's foam, world units
    static constexpr double pixelsAcross = 1024, pixelsUp = 128;
    static constexpr int looks = 3;

    /// How much nearer the nearest mesh's middle is than the next one's.
    double inside(double x, double y) const {
        const glm::dvec2 at(x / pixelsAcross * length, y / pixelsUp * depth);
        double first = 1e9, second = 1e9;  // squared
        for (const glm::dvec2& mesh : meshes_) {
            double across = std::abs(at.x - mesh.x);
            across = std::min(across, length - across);
            const double up = at.y - mesh.y, squared = across * across + up * up;
            second = std::min(second, std::max(first, squared));
            first = std::min(first, squared);
        }
        return std::sqrt(second) - std::sqrt(first);
    }
    std::array<glm::dvec2, 46> meshes_;
};

}  // namespace

Image foam() {
    constexpr int width = 1024;
    constexpr int height = 128;
    // Twice as high as the picture, so that nothing wraps from the bottom to the top.
    FloatImage bubbles(width, 2 * height, {0, 0, 0, 0});
    const FoamWeb web;
    Xorshift draws(11);
    for (int i = 0; i < 5200; ++i) {
        double x = draws.unit() * width;
        const double q = std::pow(draws.unit(), 1.8);
        x = web.nearest(x, height * (1 - q), draws);
        const double alpha = (1 - q) * (0.35 + 0.5 * draws.unit());
        const double radius = (1 - q) * 5 * draws.unit() + 1;
        bubbles.add(
            {.x = x, .y = height * (1 - q), .radius = radius, .colour = {1, 1, 1, 1}, .alpha = alpha});
    }
    Image image(width, height);
    for (int y = 0; y < height; ++y) {
        const double up = height - (y + 0.5);
        const double band = 0.85 * std::max(0.0, 1 - up / (0.22 * height));
        for (int x = 0; x < width; ++x) {
            const auto cover = static_cast<double>(bubbles.at(x, y)[3]);
            setWhite(image.at(x, y), cover + (1 - cover) * band);
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
