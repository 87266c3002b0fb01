#include "Gullwick/Scene/FloatPlane.h"

#include "Engine/Stage/Precondition.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace gull {

FloatPlane::FloatPlane(int width, int height, float value) : width_(width), height_(height) {
    if (width < 1 || height < 1 || !std::has_single_bit(static_cast<unsigned>(width)) ||
        !std::has_single_bit(static_cast<unsigned>(height))) {
        brokenPrecondition("FloatPlane: sides of %d by %d, not powers of two", width, height);
    }
    values_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), value);
}

void FloatPlane::coverRow(std::vector<float>& cover, int left, int y, double cx, double cy, double radius,
                          double alpha, Edge edge) {
    const auto dy = static_cast<float>(y + 0.5 - cy);
    const auto dx0 = static_cast<float>(left + 0.5 - cx);
    const auto a = static_cast<float>(alpha);
    const float dy2 = dy * dy;
    const std::size_t count = cover.size();
    if (edge == Edge::hard) {
        const auto rim = static_cast<float>(radius + 0.5);
        for (std::size_t i = 0; i < count; ++i) {
            const float dx = dx0 + static_cast<float>(i);
            const float inside = rim - std::sqrt(dx * dx + dy2);
            cover[i] = a * std::min(std::max(inside, 0.0F), 1.0F);
        }
    } else {
        const auto scale = static_cast<float>(1 / (radius * radius));
        for (std::size_t i = 0; i < count; ++i) {
            const float dx = dx0 + static_cast<float>(i);
            const float inside = std::max(1 - (dx * dx + dy2) * scale, 0.0F);
            cover[i] = a * inside * inside;
        }
    }
}

void FloatPlane::mix(int x, int y, const std::vector<float>& cover, float colour) {
    float* values = row(y & (height_ - 1));
    const int mask = width_ - 1;
    int place = x & mask;
    std::size_t done = 0;
    while (done < cover.size()) {
        const std::size_t run = std::min(cover.size() - done, static_cast<std::size_t>(width_ - place));
        float* to = values + place;
        for (std::size_t i = 0; i < run; ++i) to[i] += (colour - to[i]) * cover[done + i];
        done += run;
        place = 0;
    }
}

}  // namespace gull
