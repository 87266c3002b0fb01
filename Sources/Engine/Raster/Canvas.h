#pragma once

#include "Engine/Raster/Colour.h"
#include "Engine/Raster/Image.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace gull {

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    bool operator==(const Rect&) const = default;
};

struct GradientStop {
    double offset = 0;  ///< 0 to 1
    Colour colour;
    bool operator==(const GradientStop&) const = default;
};

enum class BlendMode { normal, screen, multiply, darken, add, copy };
enum class LineCap { butt, round };
enum class LineJoin { miter, round };

/// A bitmap to draw on: paths, gradients, images, blend modes, soft shadows, layers with group opacity.
/// The origin is the top-left corner and y grows down; flipped() turns it to a lower-left origin with y up,
/// the convention of texture drawing.
class Canvas {
  public:
    /// `scale`: pixels a point; the bitmap has ceil(width * scale) by ceil(height * scale) pixels,
    /// transparent. Stops the program when the bitmap cannot be made.
    Canvas(double width, double height, double scale = 1.0);
    ~Canvas();
    Canvas(Canvas&&) noexcept;
    Canvas& operator=(Canvas&&) noexcept;

    double width() const;
    double height() const;
    double scale() const;

    void save();
    void restore();
    void translate(double dx, double dy);
    void scaleBy(double sx, double sy);
    void rotate(double radians);
    /// From here on the origin is the lower-left corner and y grows up.
    void flip();
    void clip(const Rect& rect);
    /// Clips to the path and clears it.
    void clipPath();
    void setBlendMode(BlendMode mode);
    /// Everything up to the matching endLayer() is drawn as one picture at `opacity`.
    void beginLayer(double opacity);
    void endLayer();

    // Paths are built, then filled or stroked, which clears them.
    void moveTo(double x, double y);
    void lineTo(double x, double y);
    void curveTo(double x1, double y1, double x2, double y2, double x, double y);
    void closePath();
    void addRect(const Rect& rect);
    /// Corners of continuous curvature, the radius limited to half the shorter side.
    void addRoundedRect(const Rect& rect, double radius);
    void addEllipse(const Rect& rect);
    /// Angles in radians.
    void addArc(double cx, double cy, double radius, double from, double to);
    void fill(const Colour& colour);
    void stroke(const Colour& colour, double lineWidth, LineCap cap = LineCap::butt,
                LineJoin join = LineJoin::miter);
    /// Fills the path with a gradient from (x0, y0) to (x1, y1), extended beyond both ends.
    void fillLinear(double x0, double y0, double x1, double y1, const std::vector<GradientStop>& stops);
    /// Fills the path with a radial gradient; without `extend` nothing outside r1 is drawn.
    void fillRadial(double cx, double cy, double r0, double r1, const std::vector<GradientStop>& stops,
                    bool extend);
    /// Fills the path with a gradient from the top of `rect` to its bottom, its opacity multiplied by that of
    /// one from left to right.
    void fillCrossed(const Rect& rect, const std::vector<GradientStop>& down,
                     const std::vector<GradientStop>& across);
    void clear();

    /// Draws the image smoothly scaled into `rect`.
    void drawImage(const Image& image, const Rect& rect, double opacity = 1.0);
    /// Whatever is drawn between begin and end is drawn over a blurred shape of itself in `colour`; `radius`
    /// is the blur radius in points, about twice the standard deviation.
    void beginShadow(const Colour& colour, double radius, double dx = 0, double dy = 0);
    void endShadow();

    /// A copy of the bitmap, row 0 at the top.
    Image image() const;
    /// The bitmap itself: B G R A in memory, premultiplied, `strideBytes()` a row. Valid until the next
    /// drawing.
    const unsigned char* pixels() const;
    int pixelWidth() const;
    int pixelHeight() const;
    int strideBytes() const;

  private:
    friend class TextRenderer;
    friend std::string drawnAsSvg(double width, double height, const std::function<void(Canvas&)>& draw);
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
