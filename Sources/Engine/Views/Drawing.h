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

/// A view laid out in a window: what is drawn where, back to front, and the position of every named view. A
/// plain value; comparing two drawings tells what must be redrawn.
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
    /// Everything up to the matching End is drawn as one picture.
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
        Rect ink;             ///< everything it can touch, including its shadows
        std::size_t end = 0;  ///< of a Fade or Shadow: the index of its End
    };

    /// A named view. `opacity` is the product of the opacities of all views around it.
    struct Named {
        std::string name;
        Rect rect;
        double opacity = 1;
    };

    /// The marks on one layer, from `first` to before `last`, back to front. Views without a layer of their
    /// own are on a layer without a name.
    struct Layer {
        std::string name;
        double opacity = 1;
        double dx = 0;  ///< offset of the layer in points, a whole number of pixels
        double dy = 0;
        std::size_t first = 0;
        std::size_t last = 0;
    };

    Drawing() = default;
    /// Lays `view` out in a window of that size, centred if it is smaller. `scale`: pixels per point.
    Drawing(const View& view, double width, double height, double scale);

    const std::vector<Mark>& marks() const { return marks_; }
    /// Back to front; together they hold every mark.
    const std::vector<Layer>& layers() const { return layers_; }
    std::span<const Mark> marks(const Layer& layer) const {
        return std::span(marks_).subspan(layer.first, layer.last - layer.first);
    }
    /// The first view of that name.
    std::optional<Named> find(std::string_view name) const;
    /// The name of the topmost view under the point whose name begins with `prefix`; empty if there is no
    /// such view.
    std::string at(double x, double y, std::string_view prefix) const;
    /// The first visible text with exactly these words.
    const Mark* findText(std::string_view text) const;
    /// Every visible text within `rect`, in drawing order.
    std::vector<std::string> textsIn(const Rect& rect) const;

    /// Draws all layers, one over the other.
    void draw(Canvas& canvas) const;
    /// Draws the part of `layer` within `clip` (points), at full opacity and without its offset.
    void draw(Canvas& canvas, const Layer& layer, const Rect& clip) const;

    /// Appends to `damage` the rectangles (points) where one layer's marks differ from what they were.
    static void difference(std::span<const Mark> now, std::span<const Mark> before,
                           std::vector<Rect>& damage);

  private:
    std::vector<Mark> marks_;
    std::vector<Named> named_;
    std::vector<Layer> layers_;
};

}  // namespace gull
