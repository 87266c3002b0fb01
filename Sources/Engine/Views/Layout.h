#pragma once

#include "Engine/Views/Drawing.h"

namespace gull {

struct ViewSize {
    double width = 0;
    double height = 0;
};

/// Measures views and puts them in their places. Two passes, as always: sizes from the leaves up, places from
/// the root down.
class Layout {
  public:
    /// `scale`: pixels a point, for edges on whole pixels. The vectors are filled by place().
    Layout(double scale, std::vector<Drawing::Mark>& marks, std::vector<Drawing::Named>& named,
           std::vector<Drawing::Sheet>& sheets)
        : scale_(scale), marks_(marks), named_(named), sheets_(sheets) {}

    /// The size that `view` takes in `room`; without one, the size it takes by itself.
    static ViewSize measure(const View& view, const ViewSize& room = {View::unlimited, View::unlimited});
    /// Puts `root` into `rect`, which it was measured for.
    void placeRoot(const View& root, const Rect& rect);

  private:
    /// What surrounds a view: a similarity from layout to window, and whether it shows at all.
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
    void sheet(const View::Sheet& sheet, const View& view, const Rect& rect);
    void endGround();
    void mark(Drawing::Content content, const Rect& rect, double overhang);
    Rect inWindow(const Rect& rect) const;
    Rect onPixels(const Rect& rect) const;

    double scale_;
    std::vector<Drawing::Mark>& marks_;
    std::vector<Drawing::Named>& named_;
    std::vector<Drawing::Sheet>& sheets_;
    std::size_t groundBegins_ = 0;  ///< the first mark of what stands on no sheet of its own
    int enclosing_ = 0;             ///< groups and sheets around what is placed
    Surroundings around_;
};

}  // namespace gull
