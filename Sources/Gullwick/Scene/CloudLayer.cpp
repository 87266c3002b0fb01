#include "Gullwick/Scene/CloudLayer.h"

#include "Gullwick/Scene/Noise.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <cmath>
#include <glm/common.hpp>

namespace gull {

namespace {

constexpr int noiseSize = 256;
constexpr int noiseCells = 8;
/// Beyond this many standard deviations a halo is cut off; its values are lowered so that they end at 0.
constexpr double haloReach = 2.8;
/// A body's ragged edge stays inside its ellipse grown by this.
constexpr double bodyReach = 1.45;

std::vector<float> bell(double centre, double deviation, int first, int count) {
    const double floor = std::exp(-haloReach * haloReach / 2);
    std::vector<float> values;
    values.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double t = (first + i + 0.5 - centre) / deviation;
        values.push_back(static_cast<float>(std::max(0.0, (std::exp(-t * t / 2) - floor) / (1 - floor))));
    }
    return values;
}

}  // namespace

CloudLayer::CloudLayer(const BeachLook& look, int width, int shrink)
    : width_(width / shrink), height_(width / 2 / shrink), shrink_(shrink) {
    for (auto& plane : planes_) {
        plane.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), 0.0F);
    }
    noise_ = Noise::fractal(noiseSize, 29, noiseCells, 5);
    drawClouds(look);
    noise_.clear();
}

void CloudLayer::drawClouds(const BeachLook& look) {
    // In the panorama's own pixels with y up; only the puffs are turned into the layer's.
    const double w = width_ * shrink_;
    const double h = w / 2;
    const double sunX = (look.sunAzimuth / 360 + 0.5) * w;
    Xorshift draws((static_cast<std::uint64_t>(look.sunAzimuth + 200) + 91) | 1);
    const int count = static_cast<int>(std::floor(10 + 46 * look.clouds));
    const double fillAlpha = 0.35 + 0.35 * look.clouds;
    for (int cloud = 0; cloud < count; ++cloud) {
        const double x = draws.unit() * w;
        const double altitude = 2 + 34 * std::pow(draws.unit(), 1.6);
        const double y = h / 2 + altitude / 90 * (h / 2);
        const double size = (1 + 0.8 * look.clouds) * (30 + 140 * draws.unit()) * w / 2048;
        const double nearSun = (1 - std::min(std::abs(x - sunX) / (0.3 * w), 1.0)) * 0.5 + 0.25;
        const RGB lit = look.skyMid.mixed(look.sunColor, nearSun).mixed({1, 1, 1}, 0.15);
        const RGB base = look.skyMid.mixed(look.skyTop, 0.4).scaled(0.9);
        const RGB colour = base.mixed(lit, 0.35 + 0.65 * draws.unit());
        for (int p = 0; p < 4; ++p) {
            Puff puff{};
            puff.halfWidth = size * (draws.unit() + 0.6) / 2 / shrink_;
            puff.halfHeight = size * (0.12 * draws.unit() + 0.12) / 2 / shrink_;
            puff.x = (x + 1.4 * size * (draws.unit() - 0.5) + p) / shrink_;
            puff.y = (h - (y + 0.12 * size * (draws.unit() - 0.5))) / shrink_;
            // A blur of radius r has a standard deviation of r / 2.
            puff.blur = 0.45 * size / 2 / shrink_;
            puff.alpha = fillAlpha;
            puff.colour = colour;
            puff.lit = lit;
            drawHalo(puff);
            drawBody(puff);
        }
    }
}

/// A blurred ellipse, approximated by a bell of the same variance and volume.
void CloudLayer::drawHalo(const Puff& puff) {
    const double dx = std::hypot(puff.halfWidth / 2, puff.blur);
    const double dy = std::hypot(puff.halfHeight / 2, puff.blur);
    const double peak = std::min(1.0, puff.halfWidth * puff.halfHeight / (2 * dx * dy));
    const double strength = 0.9 * puff.alpha * peak;
    const int left = static_cast<int>(std::floor(puff.x - haloReach * dx));
    const int span = std::min(static_cast<int>(std::ceil(2 * haloReach * dx)) + 1, width_);
    const int top = static_cast<int>(std::floor(puff.y - haloReach * dy));
    const int rows = static_cast<int>(std::ceil(2 * haloReach * dy)) + 1;
    const std::vector<float> across = bell(puff.x, dx, left, span);
    const std::vector<float> down = bell(puff.y, dy, top, rows);
    std::vector<float> cover(across.size());
    for (int row = 0; row < rows; ++row) {
        const float alpha = static_cast<float>(strength) * down[static_cast<std::size_t>(row)];
        if (top + row < 0 || top + row >= height_ || alpha <= 0) continue;
        for (std::size_t i = 0; i < cover.size(); ++i) cover[i] = alpha * across[i];
        blend(top + row, left, cover, puff.colour);
    }
}

/// The ellipse itself, its edge eaten into by noise: flat below, heaped above, brighter on top.
void CloudLayer::drawBody(const Puff& puff) {
    const double grain = static_cast<double>(noiseSize) / noiseCells / (0.42 * puff.halfWidth);
    const int left = static_cast<int>(std::floor(puff.x - bodyReach * puff.halfWidth));
    const int span = std::min(static_cast<int>(std::ceil(2 * bodyReach * puff.halfWidth)) + 1, width_);
    const double tall = puff.halfHeight * 1.9;  // upward reach; downward it is the plain half height
    const int top = static_cast<int>(std::floor(puff.y - bodyReach * tall));
    const int bottom = static_cast<int>(std::ceil(puff.y + bodyReach * puff.halfHeight));
    std::vector<float> cover(static_cast<std::size_t>(std::max(span, 0)));
    auto noiseAt = [&](double x, double y) {
        const double fx = std::floor(x);
        const double fy = std::floor(y);
        const auto mask = static_cast<std::size_t>(noiseSize - 1);
        const auto ix = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(fx)) & mask;
        const auto iy = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(fy)) & mask;
        const std::size_t jx = (ix + 1) & mask;
        const std::size_t jy = (iy + 1) & mask;
        const double tx = x - fx;
        const double ty = y - fy;
        const double upper = noise_[iy * noiseSize + ix] * (1 - tx) + noise_[iy * noiseSize + jx] * tx;
        const double lower = noise_[jy * noiseSize + ix] * (1 - tx) + noise_[jy * noiseSize + jx] * tx;
        return upper * (1 - ty) + lower * ty;
    };
    for (int y = std::max(top, 0); y <= std::min(bottom, height_ - 1); ++y) {
        const double up = puff.y - (y + 0.5);
        const double ey = up / (up > 0 ? tall : puff.halfHeight);
        for (int i = 0; i < span; ++i) {
            const double ex = (left + i + 0.5 - puff.x) / puff.halfWidth;
            const double inside = 1 - (ex * ex + ey * ey);
            const double ragged =
                inside + 1.5 * noiseAt((left + i + puff.y * 3) * grain, (y * 1.5 + puff.x) * grain);
            cover[static_cast<std::size_t>(i)] =
                static_cast<float>(puff.alpha * glm::smoothstep(-0.1, 0.75, ragged) *
                                   glm::smoothstep(bodyReach * bodyReach, 1.0, ex * ex + ey * ey));
        }
        const double sunny = glm::smoothstep(-0.6, 1.2, ey);
        blend(y, left, cover, puff.colour.scaled(0.94).mixed(puff.lit.mixed({1, 1, 1}, 0.25), 0.6 * sunny));
    }
}

void CloudLayer::blend(int y, int left, const std::vector<float>& cover, const RGB& colour) {
    const std::array<float, 4> c{static_cast<float>(colour.r), static_cast<float>(colour.g),
                                 static_cast<float>(colour.b), 1.0F};
    // The panorama wraps around horizontally.
    int x = ((left % width_) + width_) % width_;
    std::size_t done = 0;
    while (done < cover.size()) {
        const std::size_t run = std::min(cover.size() - done, static_cast<std::size_t>(width_ - x));
        const float* alpha = cover.data() + done;
        for (std::size_t plane = 0; plane < 4; ++plane) {
            float* to = planes_[plane].data() +
                        static_cast<std::ptrdiff_t>(y) * static_cast<std::ptrdiff_t>(width_) + x;
            for (std::size_t i = 0; i < run; ++i) to[i] += (c[plane] - to[i]) * alpha[i];
        }
        done += run;
        x = 0;
    }
}

void CloudLayer::row(int y, std::array<std::vector<float>, 4>& out) const {
    const auto w = static_cast<std::size_t>(width_);
    if (shrink_ == 1) {
        for (std::size_t p = 0; p < 4; ++p) {
            const float* from = &planes_[p][static_cast<std::size_t>(y) * w];
            out[p].assign(from, from + w);
        }
        return;
    }
    // Pixel centres of the full row stand a quarter of a layer pixel off the layer's.
    const int near = y / 2;
    const int far = std::clamp(y % 2 == 0 ? near - 1 : near + 1, 0, height_ - 1);
    std::vector<float> line(w);
    for (std::size_t p = 0; p < 4; ++p) {
        const float* a = &planes_[p][static_cast<std::size_t>(near) * w];
        const float* b = &planes_[p][static_cast<std::size_t>(far) * w];
        for (std::size_t i = 0; i < w; ++i) line[i] = 0.75F * a[i] + 0.25F * b[i];
        out[p].resize(2 * w);
        float* to = out[p].data();
        for (std::size_t i = 0; i < w; ++i) {
            const float left = line[i == 0 ? w - 1 : i - 1];
            const float right = line[i + 1 == w ? 0 : i + 1];
            to[2 * i] = 0.75F * line[i] + 0.25F * left;
            to[2 * i + 1] = 0.75F * line[i] + 0.25F * right;
        }
    }
}

}  // namespace gull
