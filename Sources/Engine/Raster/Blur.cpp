#include "Engine/Raster/Blur.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace gull {

namespace {

/// Half widths of three boxes of odd width that together have the variance of a gaussian: two neighbouring
/// odd widths w and w + 2, the first m boxes narrow, the others wide.
std::array<int, 3> boxRadii(double sigma) {
    const double variance = 12 * sigma * sigma;
    int narrow = static_cast<int>(std::floor(std::sqrt(variance / 3 + 1)));
    if (narrow % 2 == 0) --narrow;
    const double w = narrow;
    const double m = std::round((variance - 3 * w * w - 12 * w - 9) / (-4 * w - 4));
    std::array<int, 3> radii{};
    for (int i = 0; i < 3; ++i) {
        radii[static_cast<std::size_t>(i)] = (i < m ? narrow : narrow + 2) / 2;
    }
    return radii;
}

/// 16.16 reciprocal of a box's width, so that the mean is one multiplication.
std::uint32_t reciprocal(int radius) {
    const int width = 2 * radius + 1;
    return static_cast<std::uint32_t>((65536 + width / 2) / width);
}

std::uint8_t mean(std::uint32_t sum, std::uint32_t factor) {
    return static_cast<std::uint8_t>(std::min<std::uint32_t>((sum * factor + 32768) >> 16, 255));
}

void boxAlong(const std::uint8_t* from, std::uint8_t* to, int count, int radius) {
    const std::uint32_t factor = reciprocal(radius);
    std::uint32_t sum = 0;
    for (int i = 0; i < std::min(radius, count); ++i) sum += from[i];
    for (int i = 0; i < count; ++i) {
        if (i + radius < count) sum += from[i + radius];
        if (i - radius - 1 >= 0) sum -= from[i - radius - 1];
        to[i] = mean(sum, factor);
    }
}

/// All columns side by side: one row of running sums, which the compiler turns into vector code.
void boxDown(const AlphaPlane& from, AlphaPlane& to, int radius, std::vector<std::uint16_t>& sums) {
    const std::uint32_t factor = reciprocal(radius);
    const auto width = static_cast<std::size_t>(from.width);
    sums.assign(width, 0);
    auto add = [&](int y) {
        const std::uint8_t* row = from.row(y);
        for (std::size_t x = 0; x < width; ++x) sums[x] = static_cast<std::uint16_t>(sums[x] + row[x]);
    };
    auto subtract = [&](int y) {
        const std::uint8_t* row = from.row(y);
        for (std::size_t x = 0; x < width; ++x) sums[x] = static_cast<std::uint16_t>(sums[x] - row[x]);
    };
    for (int y = 0; y < std::min(radius, from.height); ++y) add(y);
    for (int y = 0; y < from.height; ++y) {
        if (y + radius < from.height) add(y + radius);
        if (y - radius - 1 >= 0) subtract(y - radius - 1);
        std::uint8_t* row = to.row(y);
        for (std::size_t x = 0; x < width; ++x) row[x] = mean(sums[x], factor);
    }
}

}  // namespace

void AlphaPlane::reset(int planeWidth, int planeHeight) {
    width = planeWidth;
    height = planeHeight;
    values.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
}

int blurReach(double sigma) {
    if (!(sigma > 0)) return 0;
    const auto radii = boxRadii(sigma);
    return radii[0] + radii[1] + radii[2];
}

void blur(AlphaPlane& plane, double sigma) {
    // Beyond 127 a column's sum would leave 16 bits.
    if (!(sigma > 0) || plane.values.empty()) return;
    std::array<int, 3> radii = boxRadii(sigma);
    for (int& radius : radii) radius = std::min(radius, 127);

    std::vector<std::uint8_t> line(static_cast<std::size_t>(plane.width));
    for (int y = 0; y < plane.height; ++y) {
        std::uint8_t* row = plane.row(y);
        boxAlong(row, line.data(), plane.width, radii[0]);
        boxAlong(line.data(), row, plane.width, radii[1]);
        boxAlong(row, line.data(), plane.width, radii[2]);
        std::copy(line.begin(), line.end(), row);
    }
    AlphaPlane other;
    other.reset(plane.width, plane.height);
    std::vector<std::uint16_t> sums;
    boxDown(plane, other, radii[0], sums);
    boxDown(other, plane, radii[1], sums);
    boxDown(plane, other, radii[2], sums);
    plane.values.swap(other.values);
}

}  // namespace gull
