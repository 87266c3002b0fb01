#pragma once

#include "Engine/Render/DrawList.h"
#include "Engine/Render/Viewpoint.h"

#include <vector>

namespace gull {

/// A coarse map of the ground behind each square of the picture, in world space. It tells, without asking the
/// graphics card, which squares a moving shadow or lamp can reach, so that only those are lit again.
class ReliefGrid {
  public:
    /// What reaches a square; marks add up.
    enum Mark : unsigned char { noMark = 0, shadowMark = 1, lampMark = 2 };

    /// Reads the depth (0 to 1, lowest row first) of the whole picture seen through `view` and prepares for
    /// shadows cast from `toward`. Updates only the squares that touch `area`.
    void read(const std::vector<float>& depths, const Viewpoint& view, const glm::dvec3& toward,
              const PixelArea& area);

    /// World to the axes in which shadows are compared: z points toward the sun.
    const glm::dmat3& sunAxes() const { return sunAxes_; }
    /// Unmarks all cells.
    void clear() { marked_.assign(cells_.size(), noMark); }
    /// Marks every square that the shadow of `caster`, a box in sunAxes(), may reach.
    void markShadow(const Box& caster);
    /// Marks every square within `radius` of `middle`.
    void markReach(const glm::dvec3& middle, double radius);
    /// Marks everything as within a lamp's reach.
    void markAllLit();
    /// The smallest area with all squares in which something is lower than `height` or there is only
    /// background.
    PixelArea below(double height) const;
    /// An upper bound of all heights in the squares that touch `area`, ignoring the background.
    double highest(const PixelArea& area) const;
    /// The squares with exactly these marks, with neighbours in a row joined.
    std::vector<PixelArea> marked(int marks) const;

  private:
    struct Cell {
        Box world;
        Box inSunAxes;
        double lowest = 0;  ///< height of its lowest pixel
        bool empty = true;  ///< nothing but background
    };
    struct DepthImage;
    PixelArea cellArea(std::size_t i) const;
    Cell readCell(const DepthImage& image, const PixelArea& square) const;

    PixelSize size_;
    int cellSize_ = 16;  ///< pixels; more on large screens
    int across_ = 0;
    std::vector<Cell> cells_;
    std::vector<Box> rows_;  ///< in sunAxes(), the bounds of each row of cells
    std::vector<unsigned char> marked_;
    glm::dmat3 sunAxes_{1};
};

/// A rotation from the world to axes whose z is `toward`.
glm::dmat3 axesAlong(const glm::dvec3& toward);

}  // namespace gull
