#include "Gullwick/Scene/TrailCanvas.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace gull {

/// A radial gradient of three shades that runs out into white.
struct TrailCanvas::Stamp {
    enum class Mix { darken, multiply };
    struct Ring {
        double at;  ///< share of the radius
        std::array<double, 3> colour;
    };
    double radius;  ///< pixels
    Mix mix;
    std::array<Ring, 4> rings;

    std::array<double, 3> at(double share) const {
        std::size_t next = 1;
        while (next + 1 < rings.size() && share > rings[next].at) ++next;
        const Ring& a = rings[next - 1];
        const Ring& b = rings[next];
        const double f = b.at > a.at ? std::clamp((share - a.at) / (b.at - a.at), 0.0, 1.0) : 1;
        std::array<double, 3> colour{};
        for (std::size_t c = 0; c < 3; ++c) colour[c] = a.colour[c] + (b.colour[c] - a.colour[c]) * f;
        return colour;
    }
};

namespace {

constexpr int margin = 2;

std::uint8_t rounded(double value) {
    return static_cast<std::uint8_t>(value + 0.5);
}

PixelRect united(const PixelRect& a, const PixelRect& b) {
    if (a.width == 0) return b;
    if (b.width == 0) return a;
    const int left = std::min(a.x, b.x);
    const int top = std::min(a.y, b.y);
    return {left, top, std::max(a.x + a.width, b.x + b.width) - left,
            std::max(a.y + a.height, b.y + b.height) - top};
}

}  // namespace

TrailCanvas::TrailCanvas() : image_(width, height) {
    reset();
    texture_ = std::make_shared<Texture>(image_);
}

void TrailCanvas::reset() {
    std::fill(image_.pixels.begin(), image_.pixels.end(), std::uint8_t{255});
    dirty_ = {0, 0, width, height};
}

void TrailCanvas::sweep(const PlotPoint& at) {
    static constexpr std::array<double, 3> middle{0.88, 0.85, 0.81};
    stamp(at, {.radius = 29.8125,
               .mix = Stamp::Mix::darken,
               .rings = {{{0, middle}, {0.55, {0.93, 0.91, 0.88}}, {1, {1, 1, 1}}, {1, {1, 1, 1}}}}});
}

void TrailCanvas::hole(const PlotPoint& at) {
    stamp(
        at,
        {.radius = 27.825,
         .mix = Stamp::Mix::multiply,
         .rings = {
             {{0, {0.28, 0.22, 0.17}}, {0.4, {0.5, 0.42, 0.34}}, {0.6, {0.8, 0.72, 0.64}}, {1, {1, 1, 1}}}}});
}

void TrailCanvas::stamp(const PlotPoint& at, const Stamp& shape) {
    const double cx = at.x * (width - 2 * margin) + margin;
    const double cy = height - (at.y * (height - 2 * margin) + margin);
    const int left = std::max(0, static_cast<int>(std::floor(cx - shape.radius)));
    const int right = std::min(width, static_cast<int>(std::ceil(cx + shape.radius)));
    const int top = std::max(0, static_cast<int>(std::floor(cy - shape.radius)));
    const int bottom = std::min(height, static_cast<int>(std::ceil(cy + shape.radius)));
    if (left >= right || top >= bottom) return;

    for (int y = top; y < bottom; ++y) {
        std::uint8_t* pixel = image_.at(left, y);
        for (int x = left; x < right; ++x, pixel += 4) {
            const double dx = x + 0.5 - cx;
            const double dy = y + 0.5 - cy;
            const double distance = std::sqrt(dx * dx + dy * dy);
            if (distance >= shape.radius) continue;
            const std::array<double, 3> colour = shape.at(distance / shape.radius);
            for (std::size_t c = 0; c < 3; ++c) {
                if (shape.mix == Stamp::Mix::darken) {
                    const auto value = rounded(colour[c] * 255);
                    pixel[c] = std::min(pixel[c], value);
                } else {
                    pixel[c] = rounded(pixel[c] * colour[c]);
                }
            }
        }
    }
    dirty_ = united(dirty_, {left, top, right - left, bottom - top});
}

PixelRect TrailCanvas::upload() {
    const PixelRect changed = dirty_;
    if (changed.width > 0) texture_->update(image_, changed);
    dirty_ = {};
    return changed;
}

}  // namespace gull
