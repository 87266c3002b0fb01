#pragma once

#include "Engine/Views/View.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace gull {

/// A view laid out in a window: what is drawn where, back to front, and where every named view came to
/// stand. A plain value; two drawings can be compared, which tells what must be drawn again.
class Drawing {
  public:
    struct Text {
        std::string text;
        TextStyle style;
        Colour colour;
        double scale = 1;
        bool operator==(const Text&) const = default;
    };
    struct Picture {
        const Image* image = nullptr;
        bool operator==(const Picture&) const = default;
    };
    struct Sign {
        Symbol symbol = Symbol::star;
        Colour colour;
        bool operator==(const Sign&) const = default;
    };
    /// From here to the matching End everything is drawn as one picture.
    struct Fade {
        double opacity = 1;
        bool operator==(const Fade&) const = default;
    };
    struct Shadow {
        Colour colour;
        double radius = 0;
        bool operator==(const Shadow&) const = default;
    };
    struct End {
        bool operator==(const End&) const = default;
    };
    using Content = std::variant<ShapeStyle, Text, Picture, Sign, Fade, Shadow, End>;

    struct Mark {
        Content content;
        Rect rect;            ///< points, edges on whole pixels unless it is scaled
        Rect ink;             ///< all that it can touch, shadows around it included
        std::size_t end = 0;  ///< of a Fade or Shadow: the index of its End
    };

    /// A named view. `opacity` is the product of all that it stands in.
    struct Named {
        std::string name;
        Rect rect;
        double opacity = 1;
    };

    /// Marks that one sheet shows, from `first` to before `last`. The first marks are the rearmost. What
    /// stands on no sheet of its own is on one without a name.
    struct Sheet {
        std::string name;
        double opacity = 1;
        double dx = 0;  ///< by which the sheet is moved, points that are whole pixels
        double dy = 0;
        std::size_t first = 0;
        std::size_t last = 0;
    };

    Drawing() = default;
    /// Lays `view` out in a window of that size, centred if it is smaller. `scale`: pixels a point.
    Drawing(const View& view, double width, double height, double scale);

    const std::vector<Mark>& marks() const { return marks_; }
    /// Back to front; together they hold every mark.
    const std::vector<Sheet>& sheets() const { return sheets_; }
    std::span<const Mark> marks(const Sheet& sheet) const {
        return std::span(marks_).subspan(sheet.first, sheet.last - sheet.first);
    }
    /// The first view of that name.
    std::optional<Named> find(std::string_view name) const;
    /// The name, beginning with `prefix`, of the topmost such view under the point; empty when none is there.
    std::string at(double x, double y, std::string_view prefix) const;
    /// The first visible text that reads so.
    const Mark* findText(std::string_view text) const;
    /// Every visible text that stands within `rect`, in drawing order.
    std::vector<std::string> textsIn(const Rect& rect) const;

    /// Everything: all sheets, one over the other.
    void draw(Canvas& canvas) const;
    /// Draws what of `sheet`, at full opacity and not moved, touches `clip` (points), within it.
    void draw(Canvas& canvas, const Sheet& sheet, const Rect& clip) const;

    /// Appends to `damage` the rectangles (points) where one sheet's marks differ from what they were.
    static void difference(std::span<const Mark> now, std::span<const Mark> before,
                           std::vector<Rect>& damage);

  private:
    std::vector<Mark> marks_;
    std::vector<Named> named_;
    std::vector<Sheet> sheets_;
};

}  // namespace gull
