#pragma once

#include "Engine/Gl/PixelArea.h"
#include "Engine/Render/Viewpoint.h"

#include <vector>

namespace gull {

/// Which squares of a picture show an edge: a place where what is seen steps back or bends sharply. Only
/// these gain from more than one sample a pixel.
class EdgeCells {
  public:
    static constexpr int cellSize = 16;  ///< pixels
    /// Of the tiles in which edges are drawn: whole squares, and no power of two, as other pictures' tiles.
    static constexpr PixelSize tileSize{416, 48};

    /// Looks for edges in the depth (0 to 1) of the whole picture seen through `view`, lowest row first.
    /// Only squares that touch `area` are looked at anew.
    void find(const std::vector<float>& depths, const Viewpoint& view, const PixelArea& area);
    /// The squares with an edge that touch `area`, cut to it, neighbours in a row joined.
    std::vector<PixelArea> within(const PixelArea& area) const;

  private:
    int across_ = 0;
    int along_ = 0;
    std::vector<char> hasEdge_;
};

}  // namespace gull
