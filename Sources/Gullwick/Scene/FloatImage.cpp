#include "Gullwick/Scene/FloatImage.h"

#include "Engine/Log/Require.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace gull {

namespace {

void requirePowersOfTwo(int width, int height) {
    require(width > 0 && height > 0 && std::has_single_bit(static_cast<unsigned>(width)) &&
                std::has_single_bit(static_cast<unsigned>(height)),
            "FloatImage: sides of {} by {}, not powers of two", width, height);
}

}  // namespace

FloatImage::FloatImage(int width, int height, const Pixel& fill) : width_(width), height_(height) {
    requirePowersOfTwo(width, height);
    pixels_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), fill);
}

/// Mixes in the disc's colour by coverage(squared distance from the centre) within `reach` of it.
template <typename Coverage>
void FloatImage::addRound(const Disc& disc, double reach, const Band& band, Coverage coverage) {
    const int left = static_cast<int>(std::floor(disc.x - reach));
    const int right = static_cast<int>(std::floor(disc.x + reach));
    const int top = static_cast<int>(std::floor(disc.y - reach));
    const int bottom = static_cast<int>(std::floor(disc.y + reach));
    const bool across = left < 0 || right >= width_;
    const Pixel ink = disc.colour;  // a copy that cannot alias a pixel, so that it stays in a register
    for (int py = top; py <= bottom; ++py) {
        const int place = py & (band.height - 1);
        if (place < band.from || place >= band.to) continue;
        const auto dy = static_cast<float>(py + 0.5 - disc.y);
        const auto dx0 = static_cast<float>(left + 0.5 - disc.x);
        Pixel* row = &at(0, py);
        for (int i = 0; i <= right - left; ++i) {
            const float dx = dx0 + static_cast<float>(i);
            const float alpha = coverage(dx * dx + dy * dy);
            mix(row[across ? (left + i) & (width_ - 1) : left + i], ink, alpha);
        }
    }
}

void FloatImage::addRows(const Disc& disc, const Band& band) {
    const auto alpha = static_cast<float>(disc.alpha);
    if (disc.soft) {
        const auto scale = static_cast<float>(1 / (disc.radius * disc.radius));
        addRound(disc, disc.radius, band, [=](float squared) {
            const float inside = std::max(1 - squared * scale, 0.0F);
            return alpha * inside * inside;
        });
    } else {
        const auto rim = static_cast<float>(disc.radius + 0.5);
        addRound(disc, disc.radius + 0.5, band, [=](float squared) {
            return alpha * std::min(std::max(rim - std::sqrt(squared), 0.0F), 1.0F);
        });
    }
}

void FloatImage::add(const Disc& disc) {
    addRows(disc, {0, height_, height_});
}

Image FloatImage::painted(int width, int height, const Pixel& fill, const std::vector<Disc>& discs) {
    requirePowersOfTwo(width, height);
    const int rows = std::min(16, height);
    FloatImage part(width, rows, fill);
    const int bands = height / rows;
    std::vector<std::vector<std::uint32_t>> touching(static_cast<std::size_t>(bands));
    for (std::size_t i = 0; i < discs.size(); ++i) {
        const double reach = discs[i].radius + 0.5;
        const int first = static_cast<int>(std::floor((discs[i].y - reach) / rows));
        const int last = static_cast<int>(std::floor((discs[i].y + reach) / rows));
        for (int band = first; band <= std::min(last, first + bands - 1); ++band) {
            touching[static_cast<std::size_t>(band & (bands - 1))].push_back(static_cast<std::uint32_t>(i));
        }
    }
    Image result(width, height);
    std::uint8_t* out = result.pixels.data();
    for (int band = 0; band < bands; ++band, out += 4 * part.pixels_.size()) {
        std::fill(part.pixels_.begin(), part.pixels_.end(), fill);
        for (const std::uint32_t i : touching[static_cast<std::size_t>(band)]) {
            part.addRows(discs[i], {band * rows, (band + 1) * rows, height});
        }
        part.round(out);
    }
    return result;
}

Image FloatImage::image() const {
    Image result(width_, height_);
    round(result.pixels.data());
    return result;
}

void FloatImage::round(std::uint8_t* out) const {
    for (const Pixel& pixel : pixels_) {
        for (const float value : pixel) {
            *out++ = static_cast<std::uint8_t>(std::clamp(value, 0.0F, 1.0F) * 255 + 0.5F);
        }
    }
}

}  // namespace gull
