#pragma once

#include "Engine/Views/Drawing.h"

namespace gull {

struct ViewSize {
    double width = 0;
    double height = 0;
};

/// Measures and places views in two passes: sizes from the leaves up, then positions from the root down.
class Layout {
  public:
    /// `scale`: pixels a point, for edges on whole pixels. The vectors are filled by place().
    Layout(double scale, std::vector<Drawing::Mark>& marks, std::vector<Drawing::Named>& named,
           std::vector<Drawing::Layer>& layers)
        : scale_(scale), marks_(marks), named_(named), layers_(layers) {}

    /// The size of `view` in `room`; without `room`, its natural size.
    static ViewSize measure(const View& view, const ViewSize& room = {View::unlimited, View::unlimited});
    /// Places `root` in `rect`, the size it was measured for.
    void placeRoot(const View& root, const Rect& rect);

  private:
    /// What a view inherits: the similarity from layout to window, and whether it is visible at all.
    struct Surroundings {
        double factor = 1;
        double dx = 0;
        double dy = 0;
        bool hidden = false;
    };

    void place(const View& view, const Rect& rect);
    void content(const View& view, const Rect& rect);
    void stack(const View::Stack& stack, const View& view, const Rect& rect);
    void scaled(const View& view, const Rect& rect, double factor);
    void group(Drawing::Content begin, const View& view, const Rect& rect);
    void faded(const View& view, const Rect& rect, double opacity);
    void layer(const View::OnLayer& layer, const View& view, const Rect& rect);
    void endGround();
    void mark(Drawing::Content content, const Rect& rect, double overhang);
    Rect inWindow(const Rect& rect) const;
    Rect onPixels(const Rect& rect) const;

    double scale_;
    std::vector<Drawing::Mark>& marks_;
    std::vector<Drawing::Named>& named_;
    std::vector<Drawing::Layer>& layers_;
    std::size_t groundBegins_ = 0;  ///< the first mark that is on no named layer
    int enclosing_ = 0;             ///< number of groups and layers around the current view
    Surroundings around_;
};

}  // namespace gull
