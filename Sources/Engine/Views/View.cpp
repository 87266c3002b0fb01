#include "Engine/Views/View.h"

namespace gull {

ShapeStyle ShapeStyle::filled(const Colour& colour) const {
    ShapeStyle copy = *this;
    copy.fill = colour;
    return copy;
}

ShapeStyle ShapeStyle::filled(std::vector<GradientStop> gradient) const {
    ShapeStyle copy = *this;
    copy.stops = std::move(gradient);
    return copy;
}

ShapeStyle ShapeStyle::fadedSideways(std::vector<GradientStop> gradient) const {
    ShapeStyle copy = *this;
    copy.sides = std::move(gradient);
    return copy;
}

ShapeStyle ShapeStyle::stroked(const Colour& colour, double width) const {
    ShapeStyle copy = *this;
    copy.stroke = colour;
    copy.lineWidth = width;
    return copy;
}

ShapeStyle rectangle() {
    return {};
}

ShapeStyle roundedRectangle(double radius) {
    ShapeStyle style;
    style.outline = ShapeStyle::Outline::rounded;
    style.radius = radius;
    return style;
}

ShapeStyle capsule() {
    ShapeStyle style;
    style.outline = ShapeStyle::Outline::capsule;
    return style;
}

View View::wrapped(Content wrapper) && {
    return {std::move(wrapper), views(std::move(*this))};
}

View View::named(std::string viewName) && {
    // A view that already has a name keeps it: the new name goes to a wrapper.
    if (!name.empty()) return std::move(*this).wrapped(Padding{0, 0, 0, 0}).named(std::move(viewName));
    name = std::move(viewName);
    return std::move(*this);
}

View View::padded(double horizontal, double vertical) && {
    return std::move(*this).wrapped(Padding{horizontal, vertical, horizontal, vertical});
}

View View::padded(double left, double top, double right, double bottom) && {
    return std::move(*this).wrapped(Padding{left, top, right, bottom});
}

View View::framed(std::optional<double> width, std::optional<double> height, Place across, Place along) && {
    return std::move(*this).wrapped(Frame{width, height, across, along});
}

View View::noWiderThan(double width) && {
    return std::move(*this).wrapped(Limit{width});
}

View View::shrunkToFit() && {
    return std::move(*this).wrapped(Shrink{});
}

View View::offset(double dx, double dy) && {
    return std::move(*this).wrapped(Offset{dx, dy});
}

View View::scaled(double factor) && {
    return std::move(*this).wrapped(Scale{factor});
}

View View::faded(double opacity) && {
    // A single shape needs no group: fading its colours is enough unless fill and stroke overlap.
    ShapeStyle* style = std::get_if<ShapeStyle>(&content);
    if (style != nullptr && style->stroke.a <= 0 && opacity > 0 && opacity < 1) {
        style->fill.a *= opacity;
        for (GradientStop& stop : style->stops) stop.colour.a *= opacity;
        return std::move(*this);
    }
    return std::move(*this).wrapped(Fade{opacity});
}

View View::onLayer(std::string layerName, double opacity, double dx, double dy) && {
    return std::move(*this).wrapped(OnLayer{std::move(layerName), opacity, dx, dy});
}

View View::shadowed(const Colour& colour, double radius) && {
    return std::move(*this).wrapped(Shadow{colour, radius});
}

View View::behind(View other) && {
    return {Backed{false}, views(std::move(*this), std::move(other))};
}

View View::under(View other) && {
    return {Backed{true}, views(std::move(*this), std::move(other))};
}

View text(std::string words, const Font& font, const Colour& colour, double tracking, TextAlign align,
          int maxLines) {
    TextStyle style;
    style.font = font;
    style.tracking = tracking;
    style.align = align;
    style.maxLines = maxLines;
    return View(View::Text{std::move(words), style, colour});
}

View shape(ShapeStyle style) {
    return View(std::move(style));
}

View picture(const Image* image) {
    return View(View::Picture{image});
}

View sign(Symbol symbol, double size, const Colour& colour) {
    return View(View::Sign{symbol, size, colour});
}

View gap() {
    return View(View::Gap{});
}

View gap(double length) {
    return View(View::FixedGap{length});
}

View row(double spacing, Place place, std::vector<View> children) {
    return {View::Stack{View::Axis::row, spacing, place}, std::move(children)};
}

View column(double spacing, Place place, std::vector<View> children) {
    return {View::Stack{View::Axis::column, spacing, place}, std::move(children)};
}

View layers(std::vector<View> children) {
    return {View::Layers{}, std::move(children)};
}

}  // namespace gull
