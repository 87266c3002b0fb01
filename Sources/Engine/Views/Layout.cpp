#include "Engine/Views/Layout.h"

#include "Engine/Log/Require.h"

#include <algorithm>
#include <cmath>

namespace gull {

namespace {

template <typename... Ts>
struct Cases : Ts... {
    using Ts::operator()...;
};
template <typename... Ts>
Cases(Ts...) -> Cases<Ts...>;

bool isGap(const View& view) {
    return std::holds_alternative<View::Gap>(view.content);
}

double placed(Place place, double from, double room, double size) {
    switch (place) {
        case Place::start:
            return from;
        case Place::centre:
            return from + (room - size) / 2;
        case Place::end:
            return from + room - size;
    }
    return from;
}

/// The size of a view that fills its room when the room is unlimited.
double limited(double room) {
    return std::isfinite(room) ? room : 0;
}

/// The factor by which `size` must be scaled to fit into `room`.
double fitting(const ViewSize& size, const ViewSize& room) {
    double factor = 1;
    if (size.width > room.width) factor = room.width / size.width;
    if (size.height > room.height) factor = std::min(factor, room.height / size.height);
    return factor;
}

/// The width of the longest word. Words are not broken as long as they fit.
double longestWord(const View::Text& text) {
    double longest = 0;
    for (std::size_t start = 0; start < text.text.size();) {
        const std::size_t end = std::min(text.text.find(' ', start), text.text.size());
        longest = std::max(longest, measureText(text.text.substr(start, end - start), text.style).width);
        start = end + 1;
    }
    return longest;
}

/// The narrowest room in which `text` takes no more lines than in `room`: this makes lines about equally long
/// and avoids a single word on the last line.
double balancedWidth(const View::Text& text, double room) {
    TextStyle style = text.style;
    style.maxLines = 0;
    const auto heightIn = [&](double width) {
        style.maxWidth = width;
        return measureText(text.text, style).height;
    };
    const double height = heightIn(room);
    // Whole points, so that the same few layouts are requested repeatedly and stay cached.
    double wide = std::floor(room);
    double narrow = std::floor(longestWord(text));
    if (narrow >= wide) narrow = 0;  // a script without spaces breaks anywhere
    if (wide < 1 || heightIn(wide) > height) return room;
    while (wide - narrow > 1) {
        const double middle = std::floor((narrow + wide) / 2);
        (heightIn(middle) > height ? narrow : wide) = middle;
    }
    return wide;
}

TextStyle styleFor(const View::Text& text, double room) {
    TextStyle style = text.style;
    if (std::isfinite(room) && measureText(text.text, style).width > room)
        style.maxWidth = balancedWidth(text, std::max(room, 1.0));
    return style;
}

/// Sizes along and across a stack's axis.
double along(View::Axis axis, const ViewSize& size) {
    return axis == View::Axis::row ? size.width : size.height;
}
double across(View::Axis axis, const ViewSize& size) {
    return axis == View::Axis::row ? size.height : size.width;
}

/// The sizes of a stack's children in `room`; gaps have length 0. When a row is too long, the widest child
/// gets less room.
std::vector<ViewSize> childSizes(const View::Stack& stack, const std::vector<View>& children,
                                 const ViewSize& room) {
    std::vector<ViewSize> sizes;
    sizes.reserve(children.size());
    const ViewSize free = stack.axis == View::Axis::row ? ViewSize{View::unlimited, room.height}
                                                        : ViewSize{room.width, View::unlimited};
    double length = stack.spacing * (static_cast<double>(children.size()) - 1);
    for (const View& child : children) {
        if (isGap(child)) {
            sizes.push_back({});
            continue;
        }
        if (const auto* fixed = std::get_if<View::FixedGap>(&child.content)) {
            sizes.push_back(stack.axis == View::Axis::row ? ViewSize{fixed->length, 0}
                                                          : ViewSize{0, fixed->length});
        } else {
            sizes.push_back(Layout::measure(child, free));
        }
        length += along(stack.axis, sizes.back());
    }
    if (stack.axis == View::Axis::row && length > room.width && !sizes.empty()) {
        const auto widest = std::max_element(sizes.begin(), sizes.end(),
                                             [](const auto& a, const auto& b) { return a.width < b.width; });
        const double less = std::max(0.0, widest->width - (length - room.width));
        const auto index = static_cast<std::size_t>(widest - sizes.begin());
        *widest = Layout::measure(children[index], {less, room.height});
    }
    return sizes;
}

ViewSize measureStack(const View::Stack& stack, const View& view, const ViewSize& room) {
    if (view.children.empty()) return {};
    const bool flexible = std::any_of(view.children.begin(), view.children.end(), isGap);
    double length = stack.spacing * (static_cast<double>(view.children.size()) - 1);
    double breadth = 0;
    for (const ViewSize& size : childSizes(stack, view.children, room)) {
        length += along(stack.axis, size);
        breadth = std::max(breadth, across(stack.axis, size));
    }
    const double roomAlong = stack.axis == View::Axis::row ? room.width : room.height;
    if (flexible && std::isfinite(roomAlong)) length = std::max(length, roomAlong);
    return stack.axis == View::Axis::row ? ViewSize{length, breadth} : ViewSize{breadth, length};
}

Rect inflated(const Rect& rect, double by) {
    return {rect.x - by, rect.y - by, rect.width + 2 * by, rect.height + 2 * by};
}

Rect united(const Rect& a, const Rect& b) {
    const double x = std::min(a.x, b.x);
    const double y = std::min(a.y, b.y);
    return {x, y, std::max(a.x + a.width, b.x + b.width) - x, std::max(a.y + a.height, b.y + b.height) - y};
}

}  // namespace

ViewSize Layout::measure(const View& view, const ViewSize& room) {
    const auto inner = [&](const ViewSize& innerRoom) { return measure(view.children.front(), innerRoom); };
    return std::visit(
        Cases{
            [](const View::Nothing&) { return ViewSize{}; },
            [&](const View::Gap&) {
                return ViewSize{limited(room.width), limited(room.height)};
            },
            [](const View::FixedGap&) { return ViewSize{}; },
            [&](const View::Text& text) {
                // Lines break at the style's width, which counts the space after the last letter. If measured
                // again in the width of the letters alone, they would break elsewhere.
                const TextStyle style = styleFor(text, room.width);
                const TextSize size = measureText(text.text, style);
                return ViewSize{style.maxWidth > 0 ? std::max(size.width, style.maxWidth) : size.width,
                                size.height};
            },
            [&](const ShapeStyle&) {
                return ViewSize{limited(room.width), limited(room.height)};
            },
            [&](const View::Picture&) {
                return ViewSize{limited(room.width), limited(room.height)};
            },
            [](const View::Sign& sign) {
                const SymbolSize size = symbolSize(sign.symbol, sign.size);
                return ViewSize{size.width, size.height};
            },
            [&](const View::Stack& stack) { return measureStack(stack, view, room); },
            [&](const View::Layers&) {
                ViewSize size;
                for (const View& child : view.children) {
                    const ViewSize own = measure(child, room);
                    size = {std::max(size.width, own.width), std::max(size.height, own.height)};
                }
                return size;
            },
            [&](const View::Padding& padding) {
                const double x = padding.left + padding.right;
                const double y = padding.top + padding.bottom;
                const ViewSize size = inner({std::max(0.0, room.width - x), std::max(0.0, room.height - y)});
                return ViewSize{size.width + x, size.height + y};
            },
            [&](const View::Frame& frame) {
                if (frame.width && frame.height) return ViewSize{*frame.width, *frame.height};
                const ViewSize size =
                    inner({frame.width.value_or(room.width), frame.height.value_or(room.height)});
                return ViewSize{frame.width.value_or(size.width), frame.height.value_or(size.height)};
            },
            [&](const View::Limit& limit) {
                return inner({std::min(limit.width, room.width), room.height});
            },
            [&](const View::Shrink&) {
                const ViewSize size = inner({View::unlimited, View::unlimited});
                const double factor = fitting(size, room);
                return ViewSize{size.width * factor, size.height * factor};
            },
            [&](const View::Offset&) { return inner(room); },
            [&](const View::Scale&) { return inner(room); },
            [&](const View::Fade&) { return inner(room); },
            [&](const View::OnLayer&) { return inner(room); },
            [&](const View::Shadow&) { return inner(room); },
            [&](const View::Backed&) { return inner(room); },
        },
        view.content);
}

void Layout::placeRoot(const View& root, const Rect& rect) {
    place(root, rect);
    endGround();
}

void Layout::place(const View& view, const Rect& rect) {
    if (!view.name.empty()) named_.push_back({view.name, inWindow(rect), around_.hidden ? 0.0 : 1.0});
    content(view, rect);
}

void Layout::content(const View& view, const Rect& rect) {
    std::visit(
        Cases{
            [](const View::Nothing&) {},
            [](const View::Gap&) {},
            [](const View::FixedGap&) {},
            [&](const View::Text& text) {
                // The box fits the measured lines exactly. A little more room, less than a letter, keeps the
                // same line breaks. Slanted letters and accents extend beyond the box.
                const double room = rect.width + text.style.tracking + 1;
                const TextStyle style = styleFor(text, room);
                Rect lines = rect;
                if (style.maxWidth > 0) {
                    lines.width = measureText(text.text, style).width;
                    if (style.align != TextAlign::left)
                        lines.x += (rect.width - lines.width) * (style.align == TextAlign::centre ? 0.5 : 1);
                }
                mark(Drawing::Text{text.text, style, text.colour, around_.factor}, lines,
                     text.style.font.size * 0.4);
            },
            [&](const ShapeStyle& style) {
                ShapeStyle own = style;
                own.radius *= around_.factor;
                own.lineWidth *= around_.factor;
                mark(std::move(own), rect, style.stroke.a > 0 ? style.lineWidth : 0);
            },
            [&](const View::Picture& picture) {
                if (picture.image == nullptr || picture.image->empty()) return;
                mark(Drawing::Picture{picture.image}, rect, 0);
            },
            [&](const View::Sign& sign) {
                mark(Drawing::Sign{sign.symbol, sign.colour}, rect, 1);
            },
            [&](const View::Stack& own) { stack(own, view, rect); },
            [&](const View::Layers&) {
                for (const View& child : view.children) {
                    const ViewSize size = measure(child, {rect.width, rect.height});
                    place(child,
                          {placed(Place::centre, rect.x, rect.width, size.width),
                           placed(Place::centre, rect.y, rect.height, size.height), size.width, size.height});
                }
            },
            [&](const View::Padding& padding) {
                place(view.children.front(), {rect.x + padding.left, rect.y + padding.top,
                                              std::max(0.0, rect.width - padding.left - padding.right),
                                              std::max(0.0, rect.height - padding.top - padding.bottom)});
            },
            [&](const View::Frame& frame) {
                const View& child = view.children.front();
                const ViewSize size = measure(child, {rect.width, rect.height});
                place(child,
                      {placed(frame.across, rect.x, rect.width, size.width),
                       placed(frame.along, rect.y, rect.height, size.height), size.width, size.height});
            },
            [&](const View::Limit&) { place(view.children.front(), rect); },
            [&](const View::Shrink&) {
                const ViewSize size = measure(view.children.front(), {View::unlimited, View::unlimited});
                const Rect own{rect.x + (rect.width - size.width) / 2,
                               rect.y + (rect.height - size.height) / 2, size.width, size.height};
                scaled(view.children.front(), own, fitting(size, {rect.width, rect.height}));
            },
            [&](const View::Offset& offset) {
                place(view.children.front(),
                      {rect.x + offset.dx, rect.y + offset.dy, rect.width, rect.height});
            },
            [&](const View::Scale& scale) { scaled(view.children.front(), rect, scale.factor); },
            [&](const View::Fade& fade) { faded(view.children.front(), rect, fade.opacity); },
            [&](const View::OnLayer& own) { layer(own, view.children.front(), rect); },
            [&](const View::Shadow& shadow) {
                group(Drawing::Shadow{shadow.colour, shadow.radius * around_.factor}, view.children.front(),
                      rect);
            },
            [&](const View::Backed& backed) {
                const std::size_t first = backed.inFront ? 0 : 1;
                place(view.children[first], rect);
                place(view.children[1 - first], rect);
            },
        },
        view.content);
}

void Layout::stack(const View::Stack& stack, const View& view, const Rect& rect) {
    const std::vector<ViewSize> sizes = childSizes(stack, view.children, {rect.width, rect.height});
    const bool isRow = stack.axis == View::Axis::row;
    double rest = (isRow ? rect.width : rect.height) + stack.spacing;
    for (const ViewSize& size : sizes) rest -= along(stack.axis, size) + stack.spacing;
    const auto gaps = std::count_if(view.children.begin(), view.children.end(), isGap);
    const double gapLength = gaps > 0 ? std::max(0.0, rest / static_cast<double>(gaps)) : 0;
    double at = isRow ? rect.x : rect.y;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const View& child = view.children[i];
        const ViewSize& size = sizes[i];
        if (isGap(child)) {
            at += gapLength + stack.spacing;
            continue;
        }
        place(child,
              isRow ? Rect{at, placed(stack.place, rect.y, rect.height, size.height), size.width, size.height}
                    : Rect{placed(stack.place, rect.x, rect.width, size.width), at, size.width, size.height});
        at += along(stack.axis, size) + stack.spacing;
    }
}

void Layout::scaled(const View& view, const Rect& rect, double factor) {
    const Surroundings before = around_;
    const double cx = rect.x + rect.width / 2;
    const double cy = rect.y + rect.height / 2;
    // p -> factor * (p - c) + c, then the enclosing transform.
    around_.dx += around_.factor * cx * (1 - factor);
    around_.dy += around_.factor * cy * (1 - factor);
    around_.factor *= factor;
    place(view, rect);
    around_ = before;
}

void Layout::faded(const View& view, const Rect& rect, double opacity) {
    const Surroundings before = around_;
    if (opacity <= 0 || opacity >= 1) {
        if (opacity <= 0) around_.hidden = true;
        place(view, rect);
    } else {
        // A group keeps overlapping parts from showing through each other.
        group(Drawing::Fade{opacity}, view, rect);
    }
    around_ = before;
}

void Layout::group(Drawing::Content begin, const View& view, const Rect& rect) {
    double spread = 0;
    const Surroundings before = around_;
    const std::size_t first = marks_.size();
    const std::size_t firstName = named_.size();
    if (const auto* shadow = std::get_if<Drawing::Shadow>(&begin)) {
        spread = shadow->radius * 1.5 + 1;  // three standard deviations
    }
    const auto* fade = std::get_if<Drawing::Fade>(&begin);
    const double opacity = fade != nullptr ? fade->opacity : 1;
    marks_.push_back({std::move(begin), {}, {}, 0});
    ++enclosing_;
    place(view, rect);
    --enclosing_;
    around_ = before;
    for (std::size_t i = firstName; i < named_.size(); ++i) named_[i].opacity *= opacity;
    if (marks_.size() == first + 1) {  // nothing inside is visible
        marks_.pop_back();
        return;
    }
    Rect ink = inflated(marks_[first + 1].ink, spread);
    for (std::size_t i = first + 1; i < marks_.size(); ++i) {
        marks_[i].ink = inflated(marks_[i].ink, spread);
        ink = united(ink, marks_[i].ink);
    }
    marks_[first].ink = ink;
    marks_[first].end = marks_.size();
    marks_.push_back({Drawing::End{}, {}, ink, 0});
}

void Layout::layer(const View::OnLayer& layer, const View& view, const Rect& rect) {
    require(enclosing_ == 0 && around_.factor == 1,
            "Layout: the layer \"{}\" stands within another view's layer, group or scale", layer.name);
    endGround();
    const Surroundings before = around_;
    const std::size_t first = marks_.size();
    const std::size_t firstName = named_.size();
    if (layer.opacity <= 0) around_.hidden = true;
    ++enclosing_;
    place(view, rect);
    --enclosing_;
    around_ = before;
    // A layer moves by whole pixels, so that its content stays sharp.
    const double dx = std::round(layer.dx * scale_) / scale_;
    const double dy = std::round(layer.dy * scale_) / scale_;
    for (std::size_t i = firstName; i < named_.size(); ++i) {
        named_[i].opacity *= std::clamp(layer.opacity, 0.0, 1.0);
        named_[i].rect.x += dx;
        named_[i].rect.y += dy;
    }
    if (marks_.size() > first) {
        layers_.push_back({layer.name, std::min(layer.opacity, 1.0), dx, dy, first, marks_.size()});
    }
    groundBegins_ = marks_.size();
}

void Layout::endGround() {
    if (marks_.size() > groundBegins_) layers_.push_back({{}, 1, 0, 0, groundBegins_, marks_.size()});
    groundBegins_ = marks_.size();
}

void Layout::mark(Drawing::Content content, const Rect& rect, double overhang) {
    if (around_.hidden) return;
    const Rect window = inWindow(rect);
    // Text aligns itself to pixels.
    const bool isText = std::holds_alternative<Drawing::Text>(content);
    const Rect own = isText || around_.factor != 1 ? window : onPixels(window);
    marks_.push_back({std::move(content), own, inflated(own, overhang * around_.factor), 0});
}

Rect Layout::inWindow(const Rect& rect) const {
    return {rect.x * around_.factor + around_.dx, rect.y * around_.factor + around_.dy,
            rect.width * around_.factor, rect.height * around_.factor};
}

Rect Layout::onPixels(const Rect& rect) const {
    const double left = std::round(rect.x * scale_) / scale_;
    const double top = std::round(rect.y * scale_) / scale_;
    return {left, top, std::round((rect.x + rect.width) * scale_) / scale_ - left,
            std::round((rect.y + rect.height) * scale_) / scale_ - top};
}

}  // namespace gull
