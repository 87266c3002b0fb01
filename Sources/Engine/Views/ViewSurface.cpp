#include "Engine/Views/ViewSurface.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace gull {

namespace {

using Area = ViewSurface::Area;

Area united(const Area& a, const Area& b) {
    const int x = std::min(a.x, b.x);
    const int y = std::min(a.y, b.y);
    return {x, y, std::max(a.x + a.width, b.x + b.width) - x, std::max(a.y + a.height, b.y + b.height) - y};
}

long long pixels(const Area& area) {
    return static_cast<long long>(area.width) * area.height;
}

/// Two areas are better drawn as one when they overlap, or when hardly anything is drawn in vain.
bool belongTogether(const Area& a, const Area& b) {
    const bool overlap =
        a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
    constexpr long long inVain = 1500;  // pixels; about what another pass over the drawing costs
    return overlap || pixels(united(a, b)) <= pixels(a) + pixels(b) + inVain;
}

}  // namespace

void ViewSurface::show(Drawing drawing, double width, double height, double scale) {
    damage_.clear();
    if (!canvas_ || width_ != width || height_ != height || canvas_->scale() != scale) {
        canvas_ = std::make_unique<Canvas>(width, height, scale);
        width_ = width;
        height_ = height;
        damage_.push_back({0, 0, width, height});
    } else {
        drawing.difference(drawing_, damage_);
    }
    changes_.clear();
    for (const Rect& rect : damage_) collect(rect, changes_);
    drawing_ = std::move(drawing);
    coverage_.clear();
    for (const Drawing::Mark& mark : drawing_.marks()) collect(mark.ink, coverage_);
    for (const Area& area : changes_) {
        const Rect clip{area.x / scale, area.y / scale, area.width / scale, area.height / scale};
        canvas_->save();
        canvas_->clip(clip);
        canvas_->clear();
        canvas_->restore();
        drawing_.draw(*canvas_, clip);
    }
}

void ViewSurface::collect(const Rect& rect, std::vector<Area>& areas) const {
    const double scale = canvas_->scale();
    const int left = std::max(0, static_cast<int>(std::floor(rect.x * scale)));
    const int top = std::max(0, static_cast<int>(std::floor(rect.y * scale)));
    const int right =
        std::min(canvas_->pixelWidth(), static_cast<int>(std::ceil((rect.x + rect.width) * scale)));
    const int bottom =
        std::min(canvas_->pixelHeight(), static_cast<int>(std::ceil((rect.y + rect.height) * scale)));
    if (right <= left || bottom <= top) return;
    Area area{left, top, right - left, bottom - top};
    // Whatever it joins may now touch others.
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

}  // namespace gull
