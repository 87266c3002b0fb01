#pragma once

#include "Engine/Gl/PixelArea.h"

#include <vector>

namespace gull {

/// Which parts of a picture must be restored, in squares: many small areas come out as few.
class DirtySquares {
  public:
    static constexpr int squareSize = 32;  ///< pixels

    /// For a picture of `size`; everything is dirty.
    void begin(const PixelSize& size);
    const PixelSize& size() const { return size_; }
    void mark(const PixelArea& area);
    void markAll() { mark(PixelArea::whole(size_)); }
    /// The dirty squares joined to rectangles that do not overlap; all are clean afterwards.
    std::vector<PixelArea> take();

  private:
    PixelSize size_;
    int across_ = 0;
    std::vector<char> dirty_;
};

}  // namespace gull
