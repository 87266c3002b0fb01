#pragma once

#include "Engine/Render/DrawList.h"
#include "Engine/Render/Viewpoint.h"

#include <vector>

namespace gull {

/// Where in the world the ground behind each square of the picture lies, coarsely. Tells without asking the
/// graphics card which squares a moving shadow or lamp can reach, so that only those are lit again.
class ReliefGrid {
  public:
    static constexpr int cellSize = 16;  ///< pixels
    /// What reaches a square; they add up.
    enum Mark : unsigned char { noMark = 0, shadowMark = 1, lampMark = 2 };

    /// Reads the depth (0 to 1, lowest row first) of the whole picture seen through `view` and sets up for
    /// shadows cast from `toward`; only squares that touch `area` are read anew.
    void read(const std::vector<float>& depths, const Viewpoint& view, const glm::dvec3& toward,
              const PixelArea& area);

    /// World to the axes that shadows are compared in: z points toward the sun.
    const glm::dmat3& sunAxes() const { return sunAxes_; }
    /// Unmarks all cells.
    void clear() { marked_.assign(cells_.size(), noMark); }
    /// Marks what may lie in the shadow of `caster`, a box in sunAxes().
    void markShadow(const Box& caster);
    /// Marks what lies within `radius` of `middle`.
    void markReach(const glm::dvec3& middle, double radius);
    /// Marks everything as within a lamp's reach.
    void markAllLit();
    /// What holds all squares where something is lower than `height` or nothing is at all.
    PixelArea below(double height) const;
    /// The height that nothing seen in the squares that touch `area` is above, the background left out.
    double highest(const PixelArea& area) const;
    /// The squares with exactly these marks, neighbours in a row joined.
    std::vector<PixelArea> marked(int marks) const;

  private:
    struct Cell {
        Box world;
        Box inSunAxes;
        double lowest = 0;  ///< height of the lowest of its pixels
        bool empty = true;  ///< nothing but background
    };
    struct DepthImage;
    PixelArea cellArea(std::size_t i) const;
    Cell readCell(const DepthImage& image, const PixelArea& square) const;

    PixelSize size_;
    int across_ = 0;
    std::vector<Cell> cells_;
    std::vector<Box> rows_;  ///< in sunAxes(), all that lies in a row of cells
    std::vector<unsigned char> marked_;
    glm::dmat3 sunAxes_{1};
};

/// An orthonormal frame whose z axis is `toward`; multiplies world vectors.
glm::dmat3 axesAlong(const glm::dvec3& toward);

}  // namespace gull
