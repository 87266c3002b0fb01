#include "Engine/Render/ReliefGrid.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/matrix_access.hpp>
#include <limits>

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

glm::dmat3 axesAlong(const glm::dvec3& toward) {
    glm::dvec3 up = std::abs(toward.y) < 0.99 ? glm::dvec3(0, 1, 0) : glm::dvec3(1, 0, 0);
    glm::dvec3 x = glm::normalize(glm::cross(up, toward));
    return glm::transpose(glm::dmat3(x, glm::cross(toward, x), toward));
}

void ReliefGrid::read(const std::vector<float>& depths, const Viewpoint& view, const glm::dvec3& toward,
                      const PixelArea& area) {
    size_ = view.size;
    sunAxes_ = axesAlong(toward);
    across_ = (size_.width + cellSize - 1) / cellSize;
    int along = (size_.height + cellSize - 1) / cellSize;
    cells_.resize(static_cast<std::size_t>(across_) * static_cast<std::size_t>(along));
    glm::dmat4 toWorld = glm::inverse(view.viewProjection);
    glm::dvec4 height = glm::row(toWorld, 1), depthOf = glm::row(toWorld, 3);
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        int x0 = static_cast<int>(i) % across_ * cellSize, y0 = static_cast<int>(i) / across_ * cellSize;
        if (cellArea(i).intersection(area).empty()) continue;
        int x1 = std::min(x0 + cellSize, size_.width), y1 = std::min(y0 + cellSize, size_.height);
        float nearest = 1, farthest = 0;
        for (int y = y0; y < y1; ++y) {
            const float* row = &depths[static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.width)];
            for (int x = x0; x < x1; ++x) {
                if (row[x] >= 1) continue;
                nearest = std::min(nearest, row[x]);
                farthest = std::max(farthest, row[x]);
            }
        }
        double lowest = std::numeric_limits<double>::max();
        for (int y = y0; y < y1; y += lookEvery) {
            for (int x = x0; x < x1; x += lookEvery) {
                float z = depths[static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.width) +
                                 static_cast<std::size_t>(x)];
                glm::dvec4 p(2.0 * x / size_.width - 1, 2.0 * y / size_.height - 1,
                             2.0 * static_cast<double>(z) - 1, 1);
                lowest = z < 1 ? std::min(lowest, glm::dot(height, p) / glm::dot(depthOf, p))
                               : std::numeric_limits<double>::lowest();
            }
        }
        Cell& cell = cells_[i];
        cell = Cell();
        cell.lowest = lowest;
        cell.empty = farthest == 0;
        if (cell.empty) continue;
        for (int corner = 0; corner < 8; ++corner) {
            glm::dvec4 p =
                toWorld * glm::dvec4(2.0 * (corner & 1 ? x1 : x0) / size_.width - 1,
                                     2.0 * (corner & 2 ? y1 : y0) / size_.height - 1,
                                     2.0 * static_cast<double>(corner & 4 ? farthest : nearest) - 1, 1);
            glm::dvec3 point = glm::dvec3(p) / p.w;
            for (double side : {-slack, slack}) {
                cell.world.include(point + side);
                cell.inSunAxes.include(sunAxes_ * point + side);
            }
        }
    }
    rows_.assign(static_cast<std::size_t>(along), Box());
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        Box& row = rows_[i / static_cast<std::size_t>(across_)];
        if (cells_[i].empty) continue;
        row.include(cells_[i].inSunAxes);
    }
    clear();
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
    return PixelArea{static_cast<int>(i) % across_ * cellSize, static_cast<int>(i) / across_ * cellSize,
                     cellSize, cellSize}
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
