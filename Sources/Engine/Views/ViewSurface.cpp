#include "Engine/Views/ViewSurface.h"

#include <algorithm>
#include <cmath>

namespace gull {

namespace {

using Area = OverlayLayer::Area;

constexpr int roundedTo = 16;  // pixels; so that a bitmap does not grow with every letter

bool isEmpty(const Area& area) {
    return area.width <= 0 || area.height <= 0;
}

Area united(const Area& a, const Area& b) {
    if (isEmpty(a)) return b;
    if (isEmpty(b)) return a;
    const int x = std::min(a.x, b.x);
    const int y = std::min(a.y, b.y);
    return {x, y, std::max(a.x + a.width, b.x + b.width) - x, std::max(a.y + a.height, b.y + b.height) - y};
}

bool contains(const Area& outer, const Area& inner) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
           inner.y + inner.height <= outer.y + outer.height;
}

long long pixels(const Area& area) {
    return static_cast<long long>(area.width) * area.height;
}

/// The pixels that `rect` (points) touches, within `limits`.
Area touched(const Rect& rect, double scale, const Area& limits) {
    const int left = std::max(limits.x, static_cast<int>(std::floor(rect.x * scale)));
    const int top = std::max(limits.y, static_cast<int>(std::floor(rect.y * scale)));
    const int right =
        std::min(limits.x + limits.width, static_cast<int>(std::ceil((rect.x + rect.width) * scale)));
    const int bottom =
        std::min(limits.y + limits.height, static_cast<int>(std::ceil((rect.y + rect.height) * scale)));
    return {left, top, right - left, bottom - top};
}

/// True if two areas should be drawn as one: they overlap, or joining them wastes few pixels.
bool belongTogether(const Area& a, const Area& b) {
    const bool overlap =
        a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
    constexpr long long inVain = 1500;  // pixels; costs about as much as another pass over the drawing
    return overlap || pixels(united(a, b)) <= pixels(a) + pixels(b) + inVain;
}

/// Adds `area`, merging it with others as long as that pays.
void collect(Area area, std::vector<Area>& areas) {
    if (isEmpty(area)) return;
    for (auto other = areas.begin(); other != areas.end();) {
        if (!belongTogether(area, *other)) {
            ++other;
            continue;
        }
        area = united(area, *other);
        areas.erase(other);
        other = areas.begin();
    }
    areas.push_back(area);
}

int roundedUp(int size) {
    return (size + roundedTo - 1) / roundedTo * roundedTo;
}

}  // namespace

void ViewSurface::show(const Drawing& drawing, const Drawing::Layer& layer,
                       std::span<const Drawing::Mark> before, double width, double height, double scale) {
    changes_.clear();
    coverage_.clear();
    damage_.clear();
    // The window in the layer's coordinates.
    const Area window = touched({-layer.dx, -layer.dy, width, height}, scale, {-32768, -32768, 65536, 65536});
    Area ink;
    for (const Drawing::Mark& mark : drawing.marks(layer)) {
        const Area own = touched(mark.ink, scale, window);
        ink = united(ink, own);
        collect(own, coverage_);
    }
    const bool wasCurrent = isCurrent_;
    isCurrent_ = !isEmpty(ink);
    if (!isCurrent_) return;
    if (makeRoom(ink, scale) || !wasCurrent) {
        changes_.push_back({left_, top_, canvas_->pixelWidth(), canvas_->pixelHeight()});
    } else {
        Drawing::difference(drawing.marks(layer), before, damage_);
        for (const Rect& rect : damage_) collect(touched(rect, scale, area()), changes_);
    }
    for (Area& area : changes_) {
        const Rect clip{area.x / scale, area.y / scale, area.width / scale, area.height / scale};
        canvas_->save();
        canvas_->translate(-left_ / scale, -top_ / scale);
        canvas_->save();
        canvas_->clip(clip);
        canvas_->clear();
        canvas_->restore();
        drawing.draw(*canvas_, layer, clip);
        canvas_->restore();
    }
    for (std::vector<Area>* areas : {&changes_, &coverage_}) {
        for (Area& area : *areas) area = {area.x - left_, area.y - top_, area.width, area.height};
    }
}

OverlayLayer::Area ViewSurface::area() const {
    if (!canvas_) return {};
    return {left_, top_, canvas_->pixelWidth(), canvas_->pixelHeight()};
}

/// Makes the bitmap large enough for `ink` (pixels of the window); true if all of it must be redrawn.
bool ViewSurface::makeRoom(const Area& ink, double scale) {
    const bool sameScale = canvas_ && canvas_->scale() == scale;
    if (sameScale && contains(area(), ink)) return false;
    left_ = ink.x;
    top_ = ink.y;
    if (sameScale && canvas_->pixelWidth() >= ink.width && canvas_->pixelHeight() >= ink.height) return true;
    const int width = std::max(roundedUp(ink.width), sameScale ? canvas_->pixelWidth() : 0);
    const int height = std::max(roundedUp(ink.height), sameScale ? canvas_->pixelHeight() : 0);
    canvas_ = std::make_unique<Canvas>(width / scale, height / scale, scale);
    return true;
}

}  // namespace gull
