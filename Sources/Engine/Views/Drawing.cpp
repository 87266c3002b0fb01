#include "Engine/Views/Drawing.h"

#include "Engine/Views/Layout.h"

#include <algorithm>
#include <cmath>

namespace gull {

namespace {

bool meet(const Rect& a, const Rect& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

bool contains(const Rect& outer, const Rect& inner) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
           inner.y + inner.height <= outer.y + outer.height;
}

void addOutline(Canvas& canvas, const ShapeStyle& style, const Rect& rect, double inset) {
    const Rect own{rect.x + inset, rect.y + inset, std::max(0.0, rect.width - 2 * inset),
                   std::max(0.0, rect.height - 2 * inset)};
    switch (style.outline) {
        case ShapeStyle::Outline::rectangle:
            return canvas.addRect(own);
        case ShapeStyle::Outline::rounded:
            return canvas.addRoundedRect(own, std::max(0.0, style.radius - inset));
        case ShapeStyle::Outline::capsule:
            return canvas.addRoundedRect(own, std::min(own.width, own.height) / 2);
    }
}

void drawShape(Canvas& canvas, const ShapeStyle& style, const Rect& rect) {
    if (rect.width <= 0 || rect.height <= 0) return;
    if (!style.stops.empty()) {
        addOutline(canvas, style, rect, 0);
        if (style.sides.empty())
            canvas.fillLinear(rect.x, rect.y, rect.x, rect.y + rect.height, style.stops);
        else
            canvas.fillCrossed(rect, style.stops, style.sides);
    } else if (style.fill.a > 0) {
        addOutline(canvas, style, rect, 0);
        canvas.fill(style.fill);
    }
    if (style.stroke.a <= 0) return;
    // Half of the line lies outside the edge, rounded to whole pixels so that a thin line stays sharp.
    const double outside = std::floor(style.lineWidth / 2 * canvas.scale() + 1e-9) / canvas.scale();
    addOutline(canvas, style, rect, style.lineWidth / 2 - outside);
    canvas.stroke(style.stroke, style.lineWidth);
}

void drawWords(Canvas& canvas, const Drawing::Text& text, const Rect& rect) {
    if (text.scale == 1) {
        drawText(canvas, text.text, text.style, text.colour, rect.x, rect.y);
        return;
    }
    canvas.save();
    canvas.translate(rect.x, rect.y);
    canvas.scaleBy(text.scale, text.scale);
    drawText(canvas, text.text, text.style, text.colour, 0, 0);
    canvas.restore();
}

/// True if two marks look the same and lie at the same place. The content of groups is compared separately.
bool alike(const Drawing::Mark& a, const Drawing::Mark& b) {
    if (a.content != b.content) return false;
    const bool opensOrEnds = a.end != 0 || std::holds_alternative<Drawing::End>(a.content);
    return opensOrEnds || (a.rect == b.rect && a.ink == b.ink);
}

void drawMark(Canvas& canvas, const Drawing::Mark& mark, std::vector<bool>& groupsAreShadows) {
    if (const auto* style = std::get_if<ShapeStyle>(&mark.content))
        return drawShape(canvas, *style, mark.rect);
    if (const auto* text = std::get_if<Drawing::Text>(&mark.content))
        return drawWords(canvas, *text, mark.rect);
    if (const auto* picture = std::get_if<Drawing::Picture>(&mark.content)) {
        return canvas.drawImage(*picture->image, mark.rect);
    }
    if (const auto* sign = std::get_if<Drawing::Sign>(&mark.content)) {
        return drawSymbol(canvas, sign->symbol, mark.rect, sign->colour);
    }
    if (const auto* fade = std::get_if<Drawing::Fade>(&mark.content)) {
        groupsAreShadows.push_back(false);
        return canvas.beginLayer(fade->opacity);
    }
    if (const auto* shadow = std::get_if<Drawing::Shadow>(&mark.content)) {
        groupsAreShadows.push_back(true);
        return canvas.beginShadow(shadow->colour, shadow->radius);
    }
    const bool isShadow = groupsAreShadows.back();
    groupsAreShadows.pop_back();
    isShadow ? canvas.endShadow() : canvas.endLayer();
}

}  // namespace

Drawing::Drawing(const View& view, double width, double height, double scale) {
    Layout layout(scale, marks_, named_, layers_);
    const ViewSize size = Layout::measure(view, {width, height});
    layout.placeRoot(view, {(width - size.width) / 2, (height - size.height) / 2, size.width, size.height});
}

std::optional<Drawing::Named> Drawing::find(std::string_view name) const {
    const auto found = std::find_if(named_.begin(), named_.end(),
                                    [&](const Named& candidate) { return candidate.name == name; });
    if (found == named_.end()) return std::nullopt;
    return *found;
}

std::string Drawing::at(double x, double y, std::string_view prefix) const {
    for (auto named = named_.rbegin(); named != named_.rend(); ++named) {
        const Rect& rect = named->rect;
        const bool inside = x >= rect.x && x < rect.x + rect.width && y >= rect.y && y < rect.y + rect.height;
        if (inside && named->opacity > 0 && named->name.starts_with(prefix)) return named->name;
    }
    return {};
}

const Drawing::Mark* Drawing::findText(std::string_view text) const {
    for (const Mark& mark : marks_) {
        const Text* own = std::get_if<Text>(&mark.content);
        if (own != nullptr && own->text == text) return &mark;
    }
    return nullptr;
}

std::vector<std::string> Drawing::textsIn(const Rect& rect) const {
    std::vector<std::string> texts;
    for (const Mark& mark : marks_) {
        const Text* own = std::get_if<Text>(&mark.content);
        if (own != nullptr && contains(rect, mark.rect)) texts.push_back(own->text);
    }
    return texts;
}

void Drawing::draw(Canvas& canvas) const {
    const Rect all{0, 0, canvas.width(), canvas.height()};
    for (const Layer& layer : layers_) {
        canvas.save();
        if (layer.opacity < 1) canvas.beginLayer(layer.opacity);
        canvas.translate(layer.dx, layer.dy);
        draw(canvas, layer, {all.x - layer.dx, all.y - layer.dy, all.width, all.height});
        if (layer.opacity < 1) canvas.endLayer();
        canvas.restore();
    }
}

void Drawing::draw(Canvas& canvas, const Layer& layer, const Rect& clip) const {
    canvas.save();
    canvas.clip(clip);
    std::vector<bool> groups;
    for (std::size_t i = layer.first; i < layer.last; ++i) {
        const Mark& mark = marks_[i];
        if (meet(mark.ink, clip)) {
            drawMark(canvas, mark, groups);
        } else if (mark.end != 0) {
            i = mark.end;  // skips an invisible group and its End
        }
    }
    canvas.restore();
}

void Drawing::difference(std::span<const Mark> now, std::span<const Mark> before, std::vector<Rect>& damage) {
    // Equal at the front and at the back; the marks between are paired one to one if their number is equal.
    const std::size_t shorter = std::min(now.size(), before.size());
    std::size_t front = 0;
    while (front < shorter && alike(now[front], before[front])) ++front;
    std::size_t back = 0;
    while (back < shorter - front && alike(now[now.size() - 1 - back], before[before.size() - 1 - back]))
        ++back;
    if (now.size() == before.size()) {
        for (std::size_t i = front; i < now.size() - back; ++i) {
            if (alike(now[i], before[i])) continue;
            damage.push_back(before[i].ink);
            damage.push_back(now[i].ink);
        }
        return;
    }
    for (const Mark& mark : now.subspan(front, now.size() - back - front)) damage.push_back(mark.ink);
    for (const Mark& mark : before.subspan(front, before.size() - back - front)) damage.push_back(mark.ink);
}

}  // namespace gull
