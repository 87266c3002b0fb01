#pragma once

#include "Engine/Raster/Sheet.h"
#include "Engine/Views/Drawing.h"

#include <memory>
#include <span>
#include <vector>

namespace gull {

/// The bitmap of one sheet, no larger than what is on it: only what differs from the drawing before is drawn
/// again. Bitmap and lists are kept from frame to frame, and while the sheet is out of sight.
class ViewSurface {
  public:
    using Area = Sheet::Area;

    /// Shows `sheet` of `drawing`, which was laid out for a window of that size (points) and scale (pixels a
    /// point). `before`: the marks that were shown last.
    void show(const Drawing& drawing, const Drawing::Sheet& sheet, std::span<const Drawing::Mark> before,
              double width, double height, double scale);

    /// What the bitmap shows counts for nothing any more: the next show() draws all of it.
    void forget() { isCurrent_ = false; }

    /// Where the bitmap's pixels lie in the window if the sheet is not moved.
    Area area() const;
    /// What the last show() drew again: areas of the bitmap that do not overlap.
    const std::vector<Area>& changes() const { return changes_; }
    /// Areas of the bitmap that do not overlap and outside of which it is clear.
    const std::vector<Area>& coverage() const { return coverage_; }
    /// The bitmap; none before anything was to be seen.
    const Canvas* canvas() const { return canvas_.get(); }

  private:
    bool makeRoom(const Area& ink, double scale);

    std::unique_ptr<Canvas> canvas_;
    bool isCurrent_ = false;  ///< shows what it showed last
    int left_ = 0;            ///< of the bitmap in the window, pixels
    int top_ = 0;
    std::vector<Rect> damage_;
    std::vector<Area> changes_;
    std::vector<Area> coverage_;
};

}  // namespace gull
