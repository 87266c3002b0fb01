#include "Engine/Raster/Resample.h"

#include "Engine/Log/Require.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace gull {

namespace {

/// The source pixels that make up each target pixel along one axis.
struct Axis {
    std::vector<int> first;
    std::vector<int> count;
    std::vector<float> weights;  ///< `stride` a target pixel, sum 1
    int stride = 0;
};

Axis weightsAlong(int from, int to) {
    const double ratio = static_cast<double>(from) / to;
    // Half the width of the tent; a growing image is interpolated between neighbours, so never below 1. When
    // shrinking, a tent twice as wide as the area keeps edges free of steps.
    const double reach = std::max(1.0, ratio);
    Axis axis;
    axis.stride = static_cast<int>(std::ceil(reach)) * 2 + 1;
    axis.weights.assign(static_cast<std::size_t>(axis.stride) * static_cast<std::size_t>(to), 0.0F);
    for (int i = 0; i < to; ++i) {
        const double centre = (i + 0.5) * ratio - 0.5;
        const int low = std::max(0, static_cast<int>(std::ceil(centre - reach)));
        const int high = std::min(from - 1, static_cast<int>(std::floor(centre + reach)));
        float* weights = &axis.weights[static_cast<std::size_t>(i) * static_cast<std::size_t>(axis.stride)];
        double sum = 0;
        for (int k = low; k <= high; ++k) sum += std::max(0.0, 1 - std::abs(k - centre) / reach);
        if (sum <= 0) sum = 1;
        for (int k = low; k <= high; ++k) {
            weights[k - low] = static_cast<float>(std::max(0.0, 1 - std::abs(k - centre) / reach) / sum);
        }
        axis.first.push_back(low);
        axis.count.push_back(high - low + 1);
    }
    return axis;
}

}  // namespace

Image resampled(const Image& image, int width, int height) {
    require(width > 0 && height > 0, "resampled: a size of {} by {} pixels", width, height);
    Image result(width, height);
    if (image.empty()) return result;
    const Axis across = weightsAlong(image.width, width);
    const Axis down = weightsAlong(image.height, height);

    const auto rowValues = static_cast<std::size_t>(width) * 4;
    std::vector<float> rows(rowValues * static_cast<std::size_t>(image.height));
    for (int y = 0; y < image.height; ++y) {
        float* out = &rows[rowValues * static_cast<std::size_t>(y)];
        for (int x = 0; x < width; ++x, out += 4) {
            const auto i = static_cast<std::size_t>(x);
            const float* weights = &across.weights[i * static_cast<std::size_t>(across.stride)];
            const std::uint8_t* in = image.at(across.first[i], y);
            float sum[4] = {0, 0, 0, 0};
            for (int k = 0; k < across.count[i]; ++k, in += 4) {
                for (int c = 0; c < 4; ++c) sum[c] += weights[k] * static_cast<float>(in[c]);
            }
            std::copy(sum, sum + 4, out);
        }
    }
    std::vector<float> sums(rowValues);
    for (int y = 0; y < height; ++y) {
        const auto i = static_cast<std::size_t>(y);
        const float* weights = &down.weights[i * static_cast<std::size_t>(down.stride)];
        std::fill(sums.begin(), sums.end(), 0.5F);
        for (int k = 0; k < down.count[i]; ++k) {
            const float* in = &rows[rowValues * static_cast<std::size_t>(down.first[i] + k)];
            for (std::size_t v = 0; v < rowValues; ++v) sums[v] += weights[k] * in[v];
        }
        std::uint8_t* out = result.at(0, y);
        for (std::size_t v = 0; v < rowValues; ++v) {
            out[v] = static_cast<std::uint8_t>(std::min(sums[v], 255.0F));
        }
    }
    return result;
}

}  // namespace gull
