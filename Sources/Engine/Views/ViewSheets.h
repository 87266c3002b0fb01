#pragma once

#include "Engine/Views/ViewSurface.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace gull {

/// A drawing in a window, sheet by sheet, back to front. A sheet that holds nothing but a rectangle is a wash
/// of colour and costs no bitmap; every other one has a bitmap that is kept for as long as this lives, so
/// that fading, moving and coming back cost no drawing.
class ViewSheets {
  public:
    /// Shows `drawing`, which was laid out for a window of that size (points) and scale (pixels a point).
    void show(Drawing drawing, double width, double height, double scale);
    /// The same drawing as before: nothing changes.
    void showAgain();

    /// What is to be seen; valid until the next show().
    const std::vector<Sheet>& sheets() const { return sheets_; }
    const Drawing& drawing() const { return drawing_; }

  private:
    struct Kept {
        std::string name;
        std::optional<std::size_t> shown;  ///< as which of the drawing's sheets
        std::vector<Drawing::Mark> marks;  ///< on the bitmap, while it is not shown
        bool isTaken = false;              ///< by a sheet of the drawing that is being shown
        ViewSurface surface;
    };

    int idOf(const std::string& name);
    void show(const Drawing::Sheet& sheet, Kept& kept, const Drawing& before, Sheet& result);

    std::deque<Kept> kept_;  ///< a sheet's number is its place here
    std::vector<Sheet> sheets_;
    Drawing drawing_;
    double width_ = 0;
    double height_ = 0;
    double scale_ = 1;
};

}  // namespace gull
