#include "Engine/Compositor/ReliefGrid.h"

#include "Engine/Compositor/CoarsePixels.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/matrix_access.hpp>
#include <limits>
#include <utility>

namespace gull {

namespace {

/// What the corners of a square leave out of it, world units.
constexpr double slack = 0.03;
constexpr double slackBelow = 0.03;
constexpr int lookEvery = 4;  // pixels, for heights

bool overlap(double aMin, double aMax, double bMin, double bMax) {
    return aMin <= bMax && bMin <= aMax;
}

}  // namespace

/// Depths of a picture, lowest row first, and how to get from them to the world.
struct ReliefGrid::DepthImage {
    const std::vector<float>& depths;
    PixelSize size;
    glm::dmat4 toWorld;

    float at(int x, int y) const {
        return depths[static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) +
                      static_cast<std::size_t>(x)];
    }

    glm::dvec4 clip(int x, int y, float depth) const {
        return {2.0 * x / size.width - 1, 2.0 * y / size.height - 1, 2.0 * static_cast<double>(depth) - 1, 1};
    }

    glm::dvec3 place(int x, int y, float depth) const {
        const glm::dvec4 p = toWorld * clip(x, y, depth);
        return glm::dvec3(p) / p.w;
    }

    /// The nearest and the farthest depth in `square`, ignoring the background. Farthest is 0 if there is
    /// nothing else.
    std::pair<float, float> range(const PixelArea& square) const {
        float nearest = 1, farthest = 0;
        for (int y = square.y; y < square.top(); ++y)
            for (int x = square.x; x < square.right(); ++x) {
                const float depth = at(x, y);
                if (depth >= 1) continue;
                nearest = std::min(nearest, depth);
                farthest = std::max(farthest, depth);
            }
        return {nearest, farthest};
    }

    /// The lowest height in `square`, sampled at a few of its pixels; the background is lower than anything.
    double lowest(const PixelArea& square) const {
        const glm::dvec4 height = glm::row(toWorld, 1), w = glm::row(toWorld, 3);
        double lowest = std::numeric_limits<double>::max();
        for (int y = square.y; y < square.top(); y += lookEvery)
            for (int x = square.x; x < square.right(); x += lookEvery) {
                const float depth = at(x, y);
                if (depth >= 1) return std::numeric_limits<double>::lowest();
                const glm::dvec4 p = clip(x, y, depth);
                lowest = std::min(lowest, glm::dot(height, p) / glm::dot(w, p));
            }
        return lowest;
    }
};

glm::dmat3 axesAlong(const glm::dvec3& toward) {
    glm::dvec3 up = std::abs(toward.y) < 0.99 ? glm::dvec3(0, 1, 0) : glm::dvec3(1, 0, 0);
    glm::dvec3 x = glm::normalize(glm::cross(up, toward));
    return glm::transpose(glm::dmat3(x, glm::cross(toward, x), toward));
}

void ReliefGrid::read(const std::vector<float>& depths, const Viewpoint& view, const glm::dvec3& toward,
                      const PixelArea& area) {
    size_ = view.size;
    cellSize_ = 8 * coarsePixel(size_);
    sunAxes_ = axesAlong(toward);
    across_ = (size_.width + cellSize_ - 1) / cellSize_;
    const int along = (size_.height + cellSize_ - 1) / cellSize_;
    cells_.resize(static_cast<std::size_t>(across_) * static_cast<std::size_t>(along));
    const DepthImage image{depths, size_, glm::inverse(view.viewProjection)};
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (const PixelArea square = cellArea(i); !square.intersection(area).empty())
            cells_[i] = readCell(image, square);
    rows_.assign(static_cast<std::size_t>(along), Box());
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (!cells_[i].empty) rows_[i / static_cast<std::size_t>(across_)].include(cells_[i].inSunAxes);
    clear();
}

ReliefGrid::Cell ReliefGrid::readCell(const DepthImage& image, const PixelArea& square) const {
    Cell cell;
    cell.lowest = image.lowest(square);
    const auto [nearest, farthest] = image.range(square);
    cell.empty = farthest == 0;
    if (cell.empty) return cell;
    for (const int x : {square.x, square.right()})
        for (const int y : {square.y, square.top()})
            for (const float depth : {nearest, farthest}) {
                const glm::dvec3 point = image.place(x, y, depth);
                for (const double side : {-slack, slack}) {
                    cell.world.include(point + side);
                    cell.inSunAxes.include(sunAxes_ * point + side);
                }
            }
    return cell;
}

void ReliefGrid::markAllLit() {
    for (unsigned char& marks : marked_) marks |= lampMark;
}

void ReliefGrid::markShadow(const Box& caster) {
    auto reached = [&](const Box& place) {
        return overlap(place.min.x, place.max.x, caster.min.x, caster.max.x) &&
               overlap(place.min.y, place.max.y, caster.min.y, caster.max.y) && place.min.z <= caster.max.z;
    };
    auto across = static_cast<std::size_t>(across_);
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (rows_[row].empty() || !reached(rows_[row])) continue;
        for (std::size_t i = row * across; i < (row + 1) * across; ++i)
            if (!cells_[i].empty && reached(cells_[i].inSunAxes)) marked_[i] |= shadowMark;
    }
}

void ReliefGrid::markReach(const glm::dvec3& middle, double radius) {
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        glm::dvec3 nearest = glm::clamp(middle, cells_[i].world.min, cells_[i].world.max);
        if (!cells_[i].empty && glm::distance(nearest, middle) < radius) marked_[i] |= lampMark;
    }
}

PixelArea ReliefGrid::cellArea(std::size_t i) const {
    return PixelArea{static_cast<int>(i) % across_ * cellSize_, static_cast<int>(i) / across_ * cellSize_,
                     cellSize_, cellSize_}
        .intersection(PixelArea::whole(size_));
}

PixelArea ReliefGrid::below(double height) const {
    PixelArea area;
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (cells_[i].lowest - slackBelow < height) area = area.united(cellArea(i));
    return area;
}

double ReliefGrid::highest(const PixelArea& area) const {
    double highest = std::numeric_limits<double>::lowest();
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (!cells_[i].empty && !cellArea(i).intersection(area).empty())
            highest = std::max(highest, cells_[i].world.max.y);
    return highest;
}

std::vector<PixelArea> ReliefGrid::marked(int marks) const {
    std::vector<PixelArea> areas;
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        if (marked_[i] == marks) addBeside(areas, cellArea(i));
    }
    return areas;
}

}  // namespace gull
