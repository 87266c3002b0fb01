#include "Engine/Raster/Canvas.h"

#include "Engine/Raster/CanvasImpl.h"
#include "Engine/Raster/Resample.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <numbers>

namespace gull {

namespace {

void setSource(cairo_t* context, const Colour& colour) {
    cairo_set_source_rgba(context, colour.r, colour.g, colour.b, colour.a);
}

void addStops(cairo_pattern_t* pattern, const std::vector<GradientStop>& stops) {
    for (const GradientStop& stop : stops) {
        cairo_pattern_add_color_stop_rgba(pattern, stop.offset, stop.colour.r, stop.colour.g, stop.colour.b,
                                          stop.colour.a);
    }
}

void fillWithGradient(cairo_t* context, cairo_pattern_t* pattern, const std::vector<GradientStop>& stops,
                      bool extend) {
    addStops(pattern, stops);
    cairo_pattern_set_extend(pattern, extend ? CAIRO_EXTEND_PAD : CAIRO_EXTEND_NONE);
    cairo_set_source(context, pattern);
    cairo_fill(context);
    cairo_pattern_destroy(pattern);
}

/// A corner in units of its radius: straight on from `start`, round the corner, along `out`. Between the
/// straight edge and the arc lies a cubic whose curvature grows from zero to that of the arc.
struct SmoothCorner {
    /// How far the corner reaches along its edges, as a multiple of the radius beyond 1.
    static constexpr double smoothing = 0.6;

    double reach;   ///< of the whole corner along an edge
    double ease;    ///< length of the easing curve's first handle
    double handle;  ///< of its second
    double lift;    ///< how far the easing curve leaves the edge
    double arc;     ///< the chord of the arc in the middle, along either axis
    double arcRadians;
    double radius;

    SmoothCorner(double cornerRadius, double room) : radius(cornerRadius) {
        const double free = std::min(smoothing, radius > 0 ? room / radius - 1 : 0.0);
        const double s = std::max(0.0, free);
        reach = (1 + s) * radius;
        arcRadians = std::numbers::pi / 2 * (1 - s);
        arc = std::sin(arcRadians / 2) * radius * std::numbers::sqrt2;
        const double turn = std::numbers::pi / 4 * s;
        const double tangent = radius * std::tan(turn / 2);
        handle = tangent * std::cos(turn);
        lift = tangent * std::sin(turn);
        const double rest = (reach - arc - handle - lift) / 3;
        ease = 2 * rest;
    }
};

/// Adds one corner: (x, y) is the corner point of the rectangle, (ux, uy) the direction of travel into it,
/// (vx, vy) out of it.
void addCorner(cairo_t* context, const SmoothCorner& c, double x, double y, double ux, double uy, double vx,
               double vy) {
    auto at = [&](double along, double out) {
        return std::pair{x + ux * along + vx * out, y + uy * along + vy * out};
    };
    const double half = c.ease / 2;
    const double a0 = -c.reach;
    const auto [sx, sy] = at(a0, 0);
    cairo_line_to(context, sx, sy);
    const auto [p1x, p1y] = at(a0 + c.ease, 0);
    const auto [p2x, p2y] = at(a0 + c.ease + half, 0);
    const auto [p3x, p3y] = at(a0 + c.ease + half + c.handle, c.lift);
    cairo_curve_to(context, p1x, p1y, p2x, p2y, p3x, p3y);
    // The arc as one cubic; its ends are mirror images at the corner's diagonal.
    const double k = 4.0 / 3.0 * std::tan(c.arcRadians / 4) * c.radius;
    const double turn = (std::numbers::pi / 2 - c.arcRadians) / 2;
    const double inAlong = a0 + c.ease + half + c.handle;
    const auto [q1x, q1y] = at(inAlong + k * std::cos(turn), c.lift + k * std::sin(turn));
    const auto [q2x, q2y] = at(-c.lift - k * std::sin(turn), -inAlong - k * std::cos(turn));
    const auto [q3x, q3y] = at(-c.lift, -inAlong);
    cairo_curve_to(context, q1x, q1y, q2x, q2y, q3x, q3y);
    const auto [r1x, r1y] = at(0, -(a0 + c.ease + half));
    const auto [r2x, r2y] = at(0, -(a0 + c.ease));
    const auto [r3x, r3y] = at(0, -a0);
    cairo_curve_to(context, r1x, r1y, r2x, r2y, r3x, r3y);
}

cairo_operator_t operatorOf(BlendMode mode) {
    switch (mode) {
        case BlendMode::normal:
            return CAIRO_OPERATOR_OVER;
        case BlendMode::screen:
            return CAIRO_OPERATOR_SCREEN;
        case BlendMode::multiply:
            return CAIRO_OPERATOR_MULTIPLY;
        case BlendMode::darken:
            return CAIRO_OPERATOR_DARKEN;
        case BlendMode::add:
            return CAIRO_OPERATOR_ADD;
        case BlendMode::copy:
            return CAIRO_OPERATOR_SOURCE;
    }
    return CAIRO_OPERATOR_OVER;
}

}  // namespace

Canvas::Canvas(double width, double height, double scale)
    : impl_(std::make_unique<Impl>(width, height, scale)) {}
Canvas::~Canvas() = default;
Canvas::Canvas(Canvas&&) noexcept = default;
Canvas& Canvas::operator=(Canvas&&) noexcept = default;

double Canvas::width() const {
    return impl_->width;
}
double Canvas::height() const {
    return impl_->height;
}
double Canvas::scale() const {
    return impl_->scale;
}

void Canvas::save() {
    cairo_save(impl_->context);
}
void Canvas::restore() {
    cairo_restore(impl_->context);
}
void Canvas::translate(double dx, double dy) {
    cairo_translate(impl_->context, dx, dy);
}
void Canvas::scaleBy(double sx, double sy) {
    cairo_scale(impl_->context, sx, sy);
}
void Canvas::rotate(double radians) {
    cairo_rotate(impl_->context, radians);
}

void Canvas::flip() {
    cairo_translate(impl_->context, 0, impl_->height);
    cairo_scale(impl_->context, 1, -1);
}

void Canvas::clip(const Rect& rect) {
    cairo_new_path(impl_->context);
    addRect(rect);
    cairo_clip(impl_->context);
}

void Canvas::clipPath() {
    cairo_clip(impl_->context);
}

void Canvas::setBlendMode(BlendMode mode) {
    cairo_set_operator(impl_->context, operatorOf(mode));
}

void Canvas::beginLayer(double opacity) {
    Impl::Group group;
    group.opacity = std::clamp(opacity, 0.0, 1.0);
    impl_->beginGroup(group);
}

void Canvas::endLayer() {
    impl_->paint(impl_->endGroup(false));
}

void Canvas::beginShadow(const Colour& colour, double radius, double dx, double dy) {
    Impl::Group group;
    group.shadow = true;
    group.shadowColour = colour;
    group.radius = radius;
    group.dx = dx;
    group.dy = dy;
    impl_->beginGroup(group);
}

void Canvas::endShadow() {
    const Impl::Group group = impl_->endGroup(true);
    impl_->castShadow(group);
    impl_->paint(group);
}

void Canvas::moveTo(double x, double y) {
    cairo_move_to(impl_->context, x, y);
}
void Canvas::lineTo(double x, double y) {
    cairo_line_to(impl_->context, x, y);
}
void Canvas::curveTo(double x1, double y1, double x2, double y2, double x, double y) {
    cairo_curve_to(impl_->context, x1, y1, x2, y2, x, y);
}
void Canvas::closePath() {
    cairo_close_path(impl_->context);
}

void Canvas::addRect(const Rect& rect) {
    cairo_rectangle(impl_->context, rect.x, rect.y, rect.width, rect.height);
}

void Canvas::addRoundedRect(const Rect& rect, double radius) {
    cairo_t* context = impl_->context;
    const double room = std::min(rect.width, rect.height) / 2;
    const double limited = std::clamp(radius, 0.0, std::max(room, 0.0));
    if (limited <= 0) return addRect(rect);
    const SmoothCorner corner(limited, room);
    const double right = rect.x + rect.width;
    const double bottom = rect.y + rect.height;
    cairo_new_sub_path(context);
    addCorner(context, corner, right, rect.y, 1, 0, 0, 1);
    addCorner(context, corner, right, bottom, 0, 1, -1, 0);
    addCorner(context, corner, rect.x, bottom, -1, 0, 0, -1);
    addCorner(context, corner, rect.x, rect.y, 0, -1, 1, 0);
    cairo_close_path(context);
}

void Canvas::addEllipse(const Rect& rect) {
    if (rect.width == 0 || rect.height == 0) return;
    cairo_t* context = impl_->context;
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    cairo_translate(context, rect.x + rect.width / 2, rect.y + rect.height / 2);
    cairo_scale(context, rect.width / 2, rect.height / 2);
    cairo_new_sub_path(context);
    cairo_arc(context, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_close_path(context);
    cairo_set_matrix(context, &matrix);
}

void Canvas::addArc(double cx, double cy, double radius, double from, double to) {
    if (from <= to) {
        cairo_arc(impl_->context, cx, cy, radius, from, to);
    } else {
        cairo_arc_negative(impl_->context, cx, cy, radius, from, to);
    }
}

void Canvas::fill(const Colour& colour) {
    setSource(impl_->context, colour);
    cairo_fill(impl_->context);
}

void Canvas::stroke(const Colour& colour, double lineWidth, LineCap cap, LineJoin join) {
    cairo_t* context = impl_->context;
    setSource(context, colour);
    cairo_set_line_width(context, lineWidth);
    cairo_set_line_cap(context, cap == LineCap::round ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(context, join == LineJoin::round ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
    cairo_stroke(context);
}

void Canvas::fillLinear(double x0, double y0, double x1, double y1, const std::vector<GradientStop>& stops) {
    fillWithGradient(impl_->context, cairo_pattern_create_linear(x0, y0, x1, y1), stops, true);
}

void Canvas::fillRadial(double cx, double cy, double r0, double r1, const std::vector<GradientStop>& stops,
                        bool extend) {
    fillWithGradient(impl_->context, cairo_pattern_create_radial(cx, cy, r0, cx, cy, r1), stops, extend);
}

void Canvas::fillCrossed(const Rect& rect, const std::vector<GradientStop>& down,
                         const std::vector<GradientStop>& across) {
    cairo_t* context = impl_->context;
    cairo_pattern_t* source = cairo_pattern_create_linear(rect.x, rect.y, rect.x, rect.y + rect.height);
    cairo_pattern_t* mask = cairo_pattern_create_linear(rect.x, rect.y, rect.x + rect.width, rect.y);
    addStops(source, down);
    addStops(mask, across);
    cairo_save(context);
    cairo_clip(context);
    cairo_set_source(context, source);
    cairo_mask(context, mask);
    cairo_restore(context);
    cairo_pattern_destroy(source);
    cairo_pattern_destroy(mask);
}

void Canvas::clear() {
    cairo_save(impl_->context);
    cairo_set_operator(impl_->context, CAIRO_OPERATOR_CLEAR);
    cairo_paint(impl_->context);
    cairo_restore(impl_->context);
}

void Canvas::drawImage(const Image& image, const Rect& rect, double opacity) {
    if (image.empty() || rect.width == 0 || rect.height == 0 || opacity <= 0) return;
    impl_->drawImage(image, rect, opacity);
}

Image Canvas::image() const {
    cairo_surface_flush(impl_->surface);
    Image result(pixelWidth(), pixelHeight());
    for (int y = 0; y < result.height; ++y) {
        const unsigned char* from = pixels() + static_cast<std::ptrdiff_t>(y) * strideBytes();
        std::uint8_t* to = result.at(0, y);
        for (int x = 0; x < result.width; ++x, from += 4, to += 4) {
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
            to[3] = from[3];
        }
    }
    return result;
}

const unsigned char* Canvas::pixels() const {
    cairo_surface_flush(impl_->surface);
    return cairo_image_surface_get_data(impl_->surface);
}
int Canvas::pixelWidth() const {
    return cairo_image_surface_get_width(impl_->surface);
}
int Canvas::pixelHeight() const {
    return cairo_image_surface_get_height(impl_->surface);
}
int Canvas::strideBytes() const {
    return cairo_image_surface_get_stride(impl_->surface);
}

}  // namespace gull
