#include "Engine/Compositor/EdgeCells.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace gull {

namespace {

/// Along a plane the depth changes by the same amount from pixel to pixel. An edge is where that amount
/// changes by more than this share of itself...
constexpr float bend = 0.35F;
/// ...and by more than this, world units.
constexpr double step = 0.006;

bool isEdge(float before, float here, float after, float least) {
    float in = here - before, out = after - here;
    return std::abs(out - in) > std::max(least, bend * std::max(std::abs(in), std::abs(out)));
}

/// The change of depth per world unit away from the eye, at `depth`.
double depthOfUnit(const Viewpoint& view, double depth) {
    const glm::dmat4& p = view.projection;
    if (p[2][3] == 0) return std::abs(p[2][2]) / 2;  // parallel rays
    double distance = p[3][2] / (depth * 2 - 1 + p[2][2]);
    return std::abs(p[3][2]) / (2 * distance * distance);
}

}  // namespace

void EdgeCells::find(const std::vector<float>& depths, const Viewpoint& view, const PixelArea& area) {
    int width = view.size.width, height = view.size.height;
    across_ = (width + cellSize - 1) / cellSize;
    along_ = (height + cellSize - 1) / cellSize;
    hasEdge_.resize(static_cast<std::size_t>(across_) * static_cast<std::size_t>(along_));
    // Whole squares.
    const int left = area.x / cellSize, right = std::min((area.right() + cellSize - 1) / cellSize, across_);
    const int bottom = area.y / cellSize, top = std::min((area.top() + cellSize - 1) / cellSize, along_);
    for (int y = bottom; y < top; ++y)
        for (int x = left; x < right; ++x) hasEdge_[static_cast<std::size_t>(y * across_ + x)] = 0;
    auto at = [&](int x, int y) {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    };
    for (int y = std::max(1, bottom * cellSize); y < std::min(top * cellSize, height - 1); ++y) {
        const float* row = &depths[at(0, y)];
        const float *below = &depths[at(0, y - 1)], *above = &depths[at(0, y + 1)];
        for (int cell = left; cell < right; ++cell) {
            int first = std::max(1, cell * cellSize), last = std::min((cell + 1) * cellSize, width - 1);
            if (first >= last) continue;
            auto least = static_cast<float>(step * depthOfUnit(view, static_cast<double>(row[first])));
            bool found = false;
            for (int x = first; x < last; ++x)
                found |= isEdge(row[x - 1], row[x], row[x + 1], least) ||
                         isEdge(below[x], row[x], above[x], least);
            if (!found) continue;
            hasEdge_[static_cast<std::size_t>(y / cellSize * across_ + cell)] = 1;
        }
    }
}

std::vector<PixelArea> EdgeCells::within(const PixelArea& area) const {
    std::vector<PixelArea> areas;
    if (area.empty()) return areas;
    for (int y = area.y / cellSize; y < along_ && y * cellSize < area.top(); ++y)
        for (int x = area.x / cellSize; x < across_ && x * cellSize < area.right(); ++x) {
            if (!hasEdge_[static_cast<std::size_t>(y * across_ + x)]) continue;
            addBeside(areas, PixelArea{x * cellSize, y * cellSize, cellSize, cellSize}.intersection(area));
        }
    return areas;
}

}  // namespace gull
