#pragma once

#include "Engine/Gl/PixelArea.h"

#include <vector>

namespace gull {

/// The parts of a picture to restore, in squares: many small areas come out as a few large ones.
class DirtySquares {
  public:
    static constexpr int squareSize = 32;  ///< pixels

    /// For a picture of `size`; everything is dirty.
    void begin(const PixelSize& size);
    const PixelSize& size() const { return size_; }
    void mark(const PixelArea& area);
    void markAll() { mark(PixelArea::whole(size_)); }
    /// The dirty squares, joined into rectangles that do not overlap. Afterwards all are clean.
    std::vector<PixelArea> take();

  private:
    PixelSize size_;
    int across_ = 0;
    std::vector<char> dirty_;
};

}  // namespace gull
