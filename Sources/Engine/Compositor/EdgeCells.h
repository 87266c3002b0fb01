#pragma once

#include "Engine/Gl/PixelArea.h"
#include "Engine/Render/Viewpoint.h"

#include <vector>

namespace gull {

/// The squares of a picture that show an edge: a place where the surface seen jumps in depth or bends
/// sharply. Only these gain from more than one sample per pixel.
class EdgeCells {
  public:
    static constexpr int cellSize = 16;  ///< pixels
    /// The size of the tiles in which edges are drawn: whole squares and, as for other pictures' tiles, no
    /// power of two.
    static constexpr PixelSize tileSize{416, 48};

    /// Looks for edges in the depth (0 to 1, lowest row first) of the whole picture seen through `view`.
    /// Updates only the squares that touch `area`.
    void find(const std::vector<float>& depths, const Viewpoint& view, const PixelArea& area);
    /// The squares with an edge that touch `area`, clipped to it, with neighbours in a row joined.
    std::vector<PixelArea> within(const PixelArea& area) const;

  private:
    int across_ = 0;
    int along_ = 0;
    std::vector<char> hasEdge_;
};

}  // namespace gull
