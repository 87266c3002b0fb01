#pragma once

#include "Engine/Raster/Canvas.h"
#include "Engine/Raster/Image.h"
#include "Engine/Raster/Text.h"
#include "Engine/Views/Symbol.h"

#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace gull {

/// Alignment across a row or column or within a larger frame: left or top, middle, right or bottom.
enum class Place { start, centre, end };

/// A rectangle, rounded rectangle or capsule that fills the room it is given; filled, stroked or both. A
/// stroke is centred on the edge and moved inward just enough to make it crisp.
struct ShapeStyle {
    enum class Outline { rectangle, rounded, capsule };
    Outline outline = Outline::rectangle;
    double radius = 0;                ///< of a rounded rectangle's corners
    Colour fill{0, 0, 0, 0};          ///< ignored with a gradient
    std::vector<GradientStop> stops;  ///< top to bottom
    std::vector<GradientStop>
        sides;  ///< left to right: their opacity multiplies that of `stops`; may be empty
    Colour stroke{0, 0, 0, 0};
    double lineWidth = 1;
    bool operator==(const ShapeStyle&) const = default;

    ShapeStyle filled(const Colour& colour) const;
    ShapeStyle filled(std::vector<GradientStop> gradient) const;
    ShapeStyle fadedSideways(std::vector<GradientStop> gradient) const;
    ShapeStyle stroked(const Colour& colour, double width = 1) const;
};
ShapeStyle rectangle();
ShapeStyle roundedRectangle(double radius);
ShapeStyle capsule();

/// A description of what to show: texts, shapes and pictures arranged in rows, columns and layers, all plain
/// values. It is rebuilt whenever its content changes; Drawing lays it out.
/// Modifiers wrap a view and return the result, so they read in the order in which they apply:
/// `text(...).padded(14, 10).behind(panel)`. Sizes in points.
class View {
  public:
    static constexpr double unlimited = std::numeric_limits<double>::infinity();

    /// Nothing, of no size.
    View() = default;

    View named(std::string viewName) &&;
    View padded(double horizontal, double vertical) &&;
    View padded(double left, double top, double right, double bottom) &&;
    /// In a box of this size; a component that is not set keeps the view's own size.
    View framed(std::optional<double> width, std::optional<double> height, Place across = Place::centre,
                Place along = Place::centre) &&;
    /// No wider than this: text in it wraps.
    View noWiderThan(double width) &&;
    /// Scaled down if it is larger than the room it is given.
    View shrunkToFit() &&;
    /// Moved without affecting the layout of its neighbours.
    View offset(double dx, double dy) &&;
    /// Scaled about its centre without affecting the layout of its neighbours.
    View scaled(double factor) &&;
    /// Opacity of the whole as one picture, 0 to 1; at 0 it keeps its place and is not drawn.
    View faded(double opacity) &&;
    /// On a layer of its own, faded and moved: the window caches the layer, so changing only opacity and
    /// offset redraws nothing. `layerName` is unique within the drawing. A layer must not be nested in
    /// another layer or in anything faded, shadowed or scaled.
    View onLayer(std::string layerName, double opacity = 1, double dx = 0, double dy = 0) &&;
    /// With a soft shadow of itself behind it.
    View shadowed(const Colour& colour, double radius) &&;
    /// With `other` behind it or in front of it, in this view's room.
    View behind(View other) &&;
    View under(View other) &&;

    // The parts of a view; for Layout only.
    struct Nothing {};
    struct Gap {};
    struct FixedGap {
        double length;
    };
    struct Text {
        std::string text;
        TextStyle style;
        Colour colour;
    };
    struct Picture {
        const Image* image;  ///< borrowed; drawings are compared by this pointer, not by the pixels
    };
    struct Sign {
        Symbol symbol;
        double size;
        Colour colour;
    };
    enum class Axis { row, column };
    struct Stack {
        Axis axis;
        double spacing;
        Place place;
    };
    struct Layers {};
    struct Padding {
        double left, top, right, bottom;
    };
    struct Frame {
        std::optional<double> width, height;
        Place across, along;
    };
    struct Limit {
        double width;
    };
    struct Shrink {};
    struct Offset {
        double dx, dy;
    };
    struct Scale {
        double factor;
    };
    struct Fade {
        double opacity;
    };
    struct Shadow {
        Colour colour;
        double radius;
    };
    struct OnLayer {
        std::string name;
        double opacity;
        double dx, dy;
    };
    /// children[0] determines the size; children[1] gets the same room.
    struct Backed {
        bool inFront;
    };
    using Content = std::variant<Nothing, Gap, FixedGap, Text, ShapeStyle, Picture, Sign, Stack, Layers,
                                 Padding, Frame, Limit, Shrink, Offset, Scale, Fade, OnLayer, Shadow, Backed>;

    View(Content viewContent, std::vector<View> viewChildren = {})
        : content(std::move(viewContent)), children(std::move(viewChildren)) {}

    Content content;
    std::vector<View> children;
    std::string name;

  private:
    View wrapped(Content wrapper) &&;
};

/// Children for a row, a column or layers, moved into place.
template <typename... Views>
std::vector<View> views(Views&&... items) {
    std::vector<View> list;
    list.reserve(sizeof...(items));
    (list.push_back(std::forward<Views>(items)), ...);
    return list;
}

View text(std::string words, const Font& font, const Colour& colour, double tracking = 0,
          TextAlign align = TextAlign::left, int maxLines = 0);
View shape(ShapeStyle style);
View picture(const Image* image);
View sign(Symbol symbol, double size, const Colour& colour);
/// Takes all the remaining room along its row or column.
View gap();
View gap(double length);
/// Side by side; `place` aligns them vertically.
View row(double spacing, Place place, std::vector<View> children);
/// One below the other; `place` aligns them horizontally.
View column(double spacing, Place place, std::vector<View> children);
/// Stacked and centred, the first at the back; as large as the largest.
View layers(std::vector<View> children);

}  // namespace gull
