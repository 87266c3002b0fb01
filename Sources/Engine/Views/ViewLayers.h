#pragma once

#include "Engine/Views/ViewSurface.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace gull {

/// The layers of a drawing in a window, back to front. A layer that holds only a rectangle is a gradient and
/// needs no bitmap. Every other one keeps its bitmap for the lifetime of this object, so fading it, moving it
/// and showing it again cost no drawing.
class ViewLayers {
  public:
    /// Shows `drawing`, which was laid out for a window of that size (points) and scale (pixels a point).
    void show(Drawing drawing, double width, double height, double scale);
    /// Shows the same drawing again: nothing changes.
    void showAgain();

    /// The visible layers; valid until the next show().
    const std::vector<OverlayLayer>& layers() const { return layers_; }
    const Drawing& drawing() const { return drawing_; }

  private:
    struct Kept {
        std::string name;
        std::optional<std::size_t> shown;  ///< index among the drawing's layers
        std::vector<Drawing::Mark> marks;  ///< what the bitmap holds while it is not shown
        bool isTaken = false;              ///< by a layer of the current drawing
        ViewSurface surface;
    };

    int idOf(const std::string& name);
    void show(const Drawing::Layer& layer, Kept& kept, const Drawing& before, OverlayLayer& result);

    std::deque<Kept> kept_;  ///< a layer's id is its index here
    std::vector<OverlayLayer> layers_;
    Drawing drawing_;
    double width_ = 0;
    double height_ = 0;
    double scale_ = 1;
};

}  // namespace gull
