#pragma once

#include "Engine/Views/Drawing.h"

#include <memory>
#include <vector>

namespace gull {

/// A bitmap of a window's size that always shows the latest drawing: only what differs from the one before is
/// drawn again. Bitmap and lists are kept from frame to frame.
class ViewSurface {
  public:
    /// Whole pixels.
    struct Area {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        bool operator==(const Area&) const = default;
    };

    /// Shows `drawing`, which was laid out for this size (points) and scale (pixels a point). What changed in
    /// the bitmap stands in changes().
    void show(Drawing drawing, double width, double height, double scale);

    /// The same drawing as before: nothing changes.
    void showAgain() { changes_.clear(); }

    /// What the last show() drew again: areas that do not overlap.
    const std::vector<Area>& changes() const { return changes_; }
    /// Areas that do not overlap and outside of which the bitmap is clear.
    const std::vector<Area>& coverage() const { return coverage_; }
    const Drawing& drawing() const { return drawing_; }
    /// The bitmap; none before the first show().
    const Canvas* canvas() const { return canvas_.get(); }

  private:
    void collect(const Rect& rect, std::vector<Area>& areas) const;

    std::unique_ptr<Canvas> canvas_;
    double width_ = 0;
    double height_ = 0;
    Drawing drawing_;
    std::vector<Rect> damage_;
    std::vector<Area> changes_;
    std::vector<Area> coverage_;
};

}  // namespace gull
