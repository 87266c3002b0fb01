#include "Engine/Views/ViewLayers.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace gull {

namespace {

/// The rectangle of `layer` if it holds one plain rectangle and nothing else.
const Drawing::Mark* washOf(const Drawing& drawing, const Drawing::Layer& layer) {
    if (layer.last - layer.first != 1) return nullptr;
    const Drawing::Mark& mark = drawing.marks(layer).front();
    const ShapeStyle* style = std::get_if<ShapeStyle>(&mark.content);
    if (style == nullptr || style->outline != ShapeStyle::Outline::rectangle || style->stroke.a > 0 ||
        !style->sides.empty()) {
        return nullptr;
    }
    // If both colour and opacity vary, the result depends on how they are interpolated.
    const auto mixesBoth = [](const GradientStop& a, const GradientStop& b) {
        return a.colour.a != b.colour.a && a.colour.withAlpha(1) != b.colour.withAlpha(1);
    };
    const auto& stops = style->stops;
    const bool isPlain = std::adjacent_find(stops.begin(), stops.end(), mixesBoth) == stops.end();
    return isPlain ? &mark : nullptr;
}

int pixel(double points, double scale) {
    return static_cast<int>(std::lround(points * scale));
}

}  // namespace

int ViewLayers::idOf(const std::string& name) {
    // Layers without a name are identified by their order.
    const auto found = std::find_if(kept_.begin(), kept_.end(), [&](const Kept& candidate) {
        return candidate.name == name && !candidate.isTaken;
    });
    if (found != kept_.end()) return static_cast<int>(found - kept_.begin());
    kept_.emplace_back().name = name;
    return static_cast<int>(kept_.size()) - 1;
}

void ViewLayers::show(Drawing drawing, double width, double height, double scale) {
    const Drawing before = std::exchange(drawing_, std::move(drawing));
    width_ = width;
    height_ = height;
    scale_ = scale;
    for (Kept& kept : kept_) kept.isTaken = false;
    const std::vector<Drawing::Layer>& drawn = drawing_.layers();
    layers_.resize(drawn.size());
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        layers_[i].id = idOf(drawn[i].name);
        Kept& kept = kept_[static_cast<std::size_t>(layers_[i].id)];
        show(drawn[i], kept, before, layers_[i]);
        kept.isTaken = true;
        kept.shown = i;
    }
    for (Kept& kept : kept_) {
        if (kept.isTaken || !kept.shown) continue;
        const std::span<const Drawing::Mark> last = before.marks(before.layers()[*kept.shown]);
        kept.marks.assign(last.begin(), last.end());
        kept.shown.reset();
    }
}

void ViewLayers::show(const Drawing::Layer& layer, Kept& kept, const Drawing& before, OverlayLayer& result) {
    OverlayLayer::Area place;
    result.wash.clear();
    result.pixels = nullptr;
    result.changes = result.coverage = {};
    if (const Drawing::Mark* mark = washOf(drawing_, layer)) {
        const ShapeStyle& style = std::get<ShapeStyle>(mark->content);
        const int left = pixel(mark->rect.x, scale_);
        const int top = pixel(mark->rect.y, scale_);
        place = {left, top, pixel(mark->rect.x + mark->rect.width, scale_) - left,
                 pixel(mark->rect.y + mark->rect.height, scale_) - top};
        result.wash = style.stops;
        if (style.stops.empty()) result.wash = {{0, style.fill}, {1, style.fill}};
        kept.surface.forget();
    } else {
        const std::span<const Drawing::Mark> last =
            kept.shown ? before.marks(before.layers()[*kept.shown]) : std::span(std::as_const(kept.marks));
        kept.surface.show(drawing_, layer, last, width_, height_, scale_);
        place = kept.surface.area();
        result.changes = kept.surface.changes();
        result.coverage = kept.surface.coverage();
        if (const Canvas* canvas = kept.surface.canvas()) {
            result.pixels = canvas->pixels();
            result.strideBytes = canvas->strideBytes();
        }
    }
    result.place = {place.x + pixel(layer.dx, scale_), place.y + pixel(layer.dy, scale_), place.width,
                    place.height};
    result.opacity = layer.opacity;
}

void ViewLayers::showAgain() {
    for (OverlayLayer& layer : layers_) layer.changes = {};
}

}  // namespace gull
