#pragma once

#include "Engine/Raster/OverlayLayer.h"
#include "Engine/Views/Drawing.h"

#include <memory>
#include <span>
#include <vector>

namespace gull {

/// The bitmap of one layer, no larger than its content. Only what differs from the previous drawing is
/// redrawn. The bitmap is kept between frames, and also while the layer is not visible.
class ViewSurface {
  public:
    using Area = OverlayLayer::Area;

    /// Shows `layer` of `drawing`, which was laid out for a window of that size (points) and scale (pixels a
    /// point). `before`: the marks that were shown last.
    void show(const Drawing& drawing, const Drawing::Layer& layer, std::span<const Drawing::Mark> before,
              double width, double height, double scale);

    /// Discards the content of the bitmap: the next show() draws all of it.
    void forget() { isCurrent_ = false; }

    /// The bitmap's place in the window before the layer's offset.
    Area area() const;
    /// The areas of the bitmap that the last show() redrew; they do not overlap.
    const std::vector<Area>& changes() const { return changes_; }
    /// Areas outside of which the bitmap is clear; they do not overlap.
    const std::vector<Area>& coverage() const { return coverage_; }
    /// The bitmap; null until something was drawn.
    const Canvas* canvas() const { return canvas_.get(); }

  private:
    bool makeRoom(const Area& ink, double scale);

    std::unique_ptr<Canvas> canvas_;
    bool isCurrent_ = false;  ///< the bitmap holds what the last show() drew
    int left_ = 0;            ///< position of the bitmap in the window, pixels
    int top_ = 0;
    std::vector<Rect> damage_;
    std::vector<Area> changes_;
    std::vector<Area> coverage_;
};

}  // namespace gull
