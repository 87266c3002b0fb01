#include "Gullwick/Scene/Noise.h"

#include "Engine/Log/Require.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <cmath>
#include <glm/common.hpp>

namespace gull::Noise {

namespace {

std::size_t area(int size) {
    return static_cast<std::size_t>(size) * static_cast<std::size_t>(size);
}

/// Calls row(y, above, here, below) for every row of a field that tiles.
template <typename Row>
void forEachRow(int size, const float* heights, Row row) {
    const auto n = static_cast<std::ptrdiff_t>(size);
    for (std::ptrdiff_t y = 0; y < n; ++y) {
        row(y, heights + (y + n - 1) % n * n, heights + y * n, heights + (y + 1) % n * n);
    }
}

void smooth(const Heights& from, Heights& to, int size) {
    const auto n = static_cast<std::ptrdiff_t>(size);
    forEachRow(size, from.data(),
               [&](std::ptrdiff_t y, const float* above, const float* here, const float* below) {
                   float* out = to.data() + y * n;
                   auto mean = [&](std::ptrdiff_t x, std::ptrdiff_t left, std::ptrdiff_t right) {
                       out[x] = (2 * here[x] + here[left] + here[right] + above[x] + below[x]) / 6;
                   };
                   mean(0, n - 1, 1 % n);
                   for (std::ptrdiff_t x = 1; x + 1 < n; ++x) mean(x, x - 1, x + 1);
                   mean(n - 1, (2 * n - 2) % n, 0);
               });
}

std::uint8_t encoded(double component) {
    return static_cast<std::uint8_t>((component + 1) / 2 * 255);
}

void check(const char* what, std::size_t values, int size) {
    require(size > 0 && values == area(size), "Noise::{}: {} values for a field of size {}", what, values,
            size);
}

}  // namespace

Heights grainHeights(int size, std::uint64_t seed, int blur) {
    require(size > 0, "Noise::grainHeights: size {}", size);
    Xorshift draws(seed | 1);
    Heights heights(area(size));
    for (float& height : heights) height = static_cast<float>(draws.unit());
    Heights other(heights.size());
    for (int pass = 0; pass < blur; ++pass) {
        smooth(heights, other, size);
        heights.swap(other);
    }
    const auto [low, high] = std::minmax_element(heights.begin(), heights.end());
    const float least = *low;
    const float range = std::max(*high - least, 1e-5F);
    for (float& height : heights) height = (height - least) / range;
    return heights;
}

Heights blurred(const Heights& heights, int size) {
    check("blurred", heights.size(), size);
    Heights result(heights.size());
    const auto n = static_cast<std::ptrdiff_t>(size);
    forEachRow(size, heights.data(),
               [&](std::ptrdiff_t y, const float* above, const float* here, const float* below) {
                   for (std::ptrdiff_t x = 0; x < n; ++x) {
                       const std::ptrdiff_t left = (x + n - 1) % n;
                       const std::ptrdiff_t right = (x + 1) % n;
                       float sum = 0;
                       for (const float* row : {above, here, below}) sum += row[left] + row[x] + row[right];
                       result[static_cast<std::size_t>(y * n + x)] = sum / 9;
                   }
               });
    return result;
}

Image normalMap(const Heights& heights, int size, double strength) {
    check("normalMap", heights.size(), size);
    Image map(size, size);
    const auto n = static_cast<std::ptrdiff_t>(size);
    forEachRow(size, heights.data(),
               [&](std::ptrdiff_t y, const float* above, const float* here, const float* below) {
                   std::uint8_t* out = map.at(0, static_cast<int>(y));
                   for (std::ptrdiff_t x = 0; x < n; ++x, out += 4) {
                       const double left = here[x == 0 ? n - 1 : x - 1];
                       const double right = here[x == n - 1 ? 0 : x + 1];
                       const double dx = strength * (left - right);
                       const double dy =
                           strength * (static_cast<double>(below[x]) - static_cast<double>(above[x]));
                       const double length = std::sqrt(dx * dx + dy * dy + 1);
                       out[0] = encoded(dx / length);
                       out[1] = encoded(dy / length);
                       out[2] = encoded(1 / length);
                       out[3] = 255;
                   }
               });
    return map;
}

Heights luminance(const Image& image, int size) {
    check("luminance", image.pixels.size() / 4, size);
    Heights result(area(size));
    const std::uint8_t* in = image.pixels.data();
    for (float& value : result) {
        value = (0.2126F * static_cast<float>(in[0]) + 0.7152F * static_cast<float>(in[1]) +
                 0.0722F * static_cast<float>(in[2])) /
                255;
        in += 4;
    }
    return result;
}

Heights fractal(int size, std::uint64_t seed, int cells, int octaves) {
    require(size > 0 && cells > 0 && size % (cells << std::max(octaves - 1, 0)) == 0,
            "Noise::fractal: {} octaves from {} cells in a field of size {}", octaves, cells, size);
    Xorshift draws(seed | 1);
    Heights result(area(size), 0.0F);
    Heights lattice;
    float strength = 0.5F;
    for (int octave = 0; octave < octaves; ++octave, cells *= 2, strength /= 2) {
        lattice.resize(area(cells));
        for (float& value : lattice) value = static_cast<float>(draws.unit() * 2 - 1);
        const int step = size / cells;
        std::vector<float> ease(static_cast<std::size_t>(step));
        for (int i = 0; i < step; ++i) {
            const auto t = static_cast<float>(i) / static_cast<float>(step);
            ease[static_cast<std::size_t>(i)] = glm::smoothstep(0.0F, 1.0F, t);
        }
        for (int y = 0; y < size; ++y) {
            const float* top = &lattice[static_cast<std::size_t>(y / step * cells)];
            const float* bottom = &lattice[static_cast<std::size_t>((y / step + 1) % cells * cells)];
            const float down = ease[static_cast<std::size_t>(y % step)];
            float* out = &result[static_cast<std::size_t>(y) * static_cast<std::size_t>(size)];
            for (int cell = 0; cell < cells; ++cell) {
                const int next = (cell + 1) % cells;
                const float left = top[cell] + (bottom[cell] - top[cell]) * down;
                const float right = top[next] + (bottom[next] - top[next]) * down;
                for (const float across : ease) *out++ += strength * (left + (right - left) * across);
            }
        }
    }
    return result;
}

}  // namespace gull::Noise
