#include "Gullwick/Scene/SkyTexture.h"

#include "Engine/Log/Require.h"
#include "Gullwick/Scene/CloudLayer.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/common.hpp>

namespace gull {

namespace {

using Row = std::array<std::vector<float>, 3>;

struct Stop {
    double at;
    RGB colour;
    double alpha = 1;
};

/// The colour at `t` between the stops, the first and last beyond them.
template <std::size_t n>
Stop between(const std::array<Stop, n>& stops, double t) {
    if (t <= stops.front().at) return stops.front();
    for (std::size_t i = 1; i < n; ++i) {
        if (t < stops[i].at) {
            const double f = (t - stops[i - 1].at) / (stops[i].at - stops[i - 1].at);
            return {t, stops[i - 1].colour.mixed(stops[i].colour, f),
                    stops[i - 1].alpha + (stops[i].alpha - stops[i - 1].alpha) * f};
        }
    }
    return stops.back();
}

std::array<float, 3> floats(const RGB& colour) {
    return {static_cast<float>(colour.r), static_cast<float>(colour.g), static_cast<float>(colour.b)};
}

/// A radial gradient about the sun, as premultiplied colours at even steps of the distance.
class Glow {
  public:
    template <std::size_t n>
    Glow(double radius, const std::array<Stop, n>& stops) : radius_(radius) {
        for (int i = 0; i <= steps; ++i) {
            const Stop stop = between(stops, static_cast<double>(i) / steps);
            values_[static_cast<std::size_t>(i)] = floats(stop.colour.scaled(stop.alpha));
        }
        values_[steps] = {0, 0, 0};
    }

    /// Screens the glow onto the row whose centre line is `dy` away from the sun's.
    void screenOnto(Row& row, double sunX, double dy) const {
        if (std::abs(dy) >= radius_) return;
        const double half = std::sqrt(radius_ * radius_ - dy * dy);
        const int count = static_cast<int>(row[0].size());
        const int from = std::max(0, static_cast<int>(std::floor(sunX - half)));
        const int to = std::min(count - 1, static_cast<int>(std::ceil(sunX + half)));
        const float scale = static_cast<float>(steps / radius_);
        for (int x = from; x <= to; ++x) {
            const auto dx = static_cast<float>(x + 0.5 - sunX);
            const float place = std::sqrt(dx * dx + static_cast<float>(dy * dy)) * scale;
            const int index = std::min(static_cast<int>(place), steps - 1);
            const float f = std::min(place - static_cast<float>(index), 1.0F);
            const auto& a = values_[static_cast<std::size_t>(index)];
            const auto& b = values_[static_cast<std::size_t>(index) + 1];
            for (std::size_t c = 0; c < 3; ++c) {
                float& value = row[c][static_cast<std::size_t>(x)];
                value += (a[c] + (b[c] - a[c]) * f) * (1 - value);
            }
        }
    }

  private:
    static constexpr int steps = 512;
    double radius_;
    std::array<std::array<float, 3>, steps + 1> values_;
};

/// Noise of less than one 8-bit step that is added before rounding down, so that no gradient shows bands.
class Dither {
  public:
    Dither() {
        Xorshift draws(5);
        for (float& value : values_) value = static_cast<float>(draws.unit());
    }
    const float* row(int y, std::size_t channel) const {
        // Each channel and each row starts at a different place, so that the tiling does not show.
        const auto i = static_cast<std::size_t>(y);
        return &values_[(i % side) * 2 * side + (channel * 23 + i / side * 11) % side];
    }
    static constexpr std::size_t side = 64;

  private:
    std::array<float, side * side * 2> values_{};  // rows twice as long as they repeat
};

void store(const Row& row, const Dither& dither, int y, std::uint8_t* out) {
    const std::size_t count = row[0].size();
    for (std::size_t c = 0; c < 3; ++c) {
        const float* noise = dither.row(y, c);
        const float* in = row[c].data();
        for (std::size_t x = 0; x < count; ++x) {
            const float value = in[x] * 255 + noise[x % Dither::side];
            out[4 * x + c] = static_cast<std::uint8_t>(std::clamp(static_cast<int>(value), 0, 255));
        }
    }
    for (std::size_t x = 0; x < count; ++x) out[4 * x + 3] = 255;
}

/// Clouds fade in above the haze: absent below the horizon, full two degrees above it.
float cloudsAt(double elevation) {
    return static_cast<float>(glm::smoothstep(-0.5, 2.0, elevation));
}

}  // namespace

Image skyPanorama(const BeachLook& look, int width) {
    require(width >= 2 && width % 4 == 0, "skyPanorama: width {}", width);
    const int height = width / 2;
    const double h = height;
    const std::array<Stop, 6> gradient{{{0, look.sand.scaled(0.42)},
                                        {0.47, look.water.mixed(look.horizon, 0.35)},
                                        {0.5, look.horizon},
                                        {0.56, look.skyMid},
                                        {0.78, look.skyTop},
                                        {1, look.skyTop.scaled(0.8)}}};
    const std::array<Stop, 3> veil{{{0, look.skyMid, 0}, {0.2, look.skyMid, 0.55}, {1, look.skyTop, 0.7}}};
    const double sunX = (look.sunAzimuth / 360 + 0.5) * width;
    const double sunY = h / 2 + look.sunElevation / 90 * (h / 2);
    const double disc = 0.014 * h;
    const Glow halo(
        0.42 * h,
        std::array<Stop, 3>{{{0, look.sunColor, 0.55}, {0.35, look.sunColor, 0.18}, {1, look.sunColor, 0}}});
    const Glow core(0.07 * h, std::array<Stop, 3>{
                                  {{0, {1, 1, 1}, 0.95}, {0.3, look.sunColor, 0.7}, {1, look.sunColor, 0}}});
    const CloudLayer clouds(look, width, width > 1024 ? 2 : 1);
    const Dither dither;

    Image image(width, height);
    Row row;
    std::array<std::vector<float>, 4> cloud;
    for (int y = 0; y < height; ++y) {
        const double up = h - (y + 0.5);
        const auto sky = floats(between(gradient, up / h).colour);
        for (std::size_t c = 0; c < 3; ++c) row[c].assign(static_cast<std::size_t>(width), sky[c]);

        halo.screenOnto(row, sunX, up - sunY);
        core.screenOnto(row, sunX, up - sunY);
        if (std::abs(up - sunY) < disc + 1) {
            for (int x = std::max(0, static_cast<int>(sunX - disc - 1));
                 x <= std::min(width - 1, static_cast<int>(sunX + disc + 1)); ++x) {
                const double distance = std::hypot(x + 0.5 - sunX, up - sunY);
                const auto cover = static_cast<float>(std::clamp(disc + 0.5 - distance, 0.0, 1.0));
                for (auto& channel : row) {
                    float& value = channel[static_cast<std::size_t>(x)];
                    value += (1 - value) * cover;
                }
            }
        }

        const float shown = cloudsAt((up / h - 0.5) * 180);
        if (shown > 0) {
            clouds.row(y, cloud);
            const float* cover = cloud[CloudLayer::coverage].data();
            for (std::size_t c = 0; c < 3; ++c) {
                const float* colour = cloud[c].data();
                float* value = row[c].data();
                for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
                    value[x] += (colour[x] - value[x] * cover[x]) * shown;
                }
            }
        }
        if (look.clouds > 0.9 && up > h / 2) {
            const Stop over = between(veil, (up - h / 2) / (h / 2));
            const auto colour = floats(over.colour);
            const auto alpha = static_cast<float>(over.alpha);
            for (std::size_t c = 0; c < 3; ++c) {
                for (float& value : row[c]) value += (colour[c] - value) * alpha;
            }
        }
        store(row, dither, y, image.at(0, y));
    }
    return image;
}

}  // namespace gull
