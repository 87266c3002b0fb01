#include "Engine/Raster/GlyphShapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace gull::GlyphShapes {

namespace {

using Point = std::pair<double, double>;

constexpr double pi = std::numbers::pi;

/// The largest box of the proportion width : height in the middle of `box`.
Rect fitted(const Rect& box, double proportion) {
    const double width = std::min(box.width, box.height * proportion);
    const double height = width / proportion;
    return {box.x + (box.width - width) / 2, box.y + (box.height - height) / 2, width, height};
}

Point between(const Point& a, const Point& b, double fraction) {
    return {a.first + (b.first - a.first) * fraction, a.second + (b.second - a.second) * fraction};
}

/// A polygon whose corners are rounded, starting at a fraction of their edges.
void addRounded(Canvas& canvas, const std::vector<Point>& corners, const std::vector<double>& cuts) {
    const std::size_t n = corners.size();
    for (std::size_t i = 0; i < n; ++i) {
        const Point& corner = corners[i];
        const Point in = between(corner, corners[(i + n - 1) % n], cuts[i % cuts.size()]);
        const Point out = between(corner, corners[(i + 1) % n], cuts[i % cuts.size()]);
        if (i == 0) {
            canvas.moveTo(in.first, in.second);
        } else {
            canvas.lineTo(in.first, in.second);
        }
        const Point a = between(in, corner, 0.6);
        const Point b = between(out, corner, 0.6);
        canvas.curveTo(a.first, a.second, b.first, b.second, out.first, out.second);
    }
    canvas.closePath();
}

/// `shrink` moves the edges inward by that many points.
void addStar(Canvas& canvas, const Rect& box, double shrink, const std::vector<double>& cuts) {
    // A star in this circle is as wide as the box: its widest points lie at 18 degrees.
    const double radius = std::min(box.width, box.height) / 2 / std::cos(pi / 10);
    const double inner = radius * 0.46;
    // The star is taller above its circle's centre than below: 1 against cos 36 degrees.
    const double cx = box.x + box.width / 2;
    const double cy = box.y + box.height / 2 + radius * (1 - std::cos(pi / 5)) / 2;
    // Moving every edge inward by d brings the points of the star nearer to its centre by d / sin(half
    // angle).
    const double edge = std::hypot(radius - inner * std::cos(pi / 5), inner * std::sin(pi / 5));
    const double distance = radius * inner * std::sin(pi / 5) / edge;
    const double factor = (distance - shrink) / distance;
    std::vector<Point> corners;
    for (int i = 0; i < 10; ++i) {
        const double angle = -pi / 2 + i * pi / 5;
        const double r = (i % 2 == 0 ? radius : inner) * factor;
        corners.emplace_back(cx + r * std::cos(angle), cy + r * std::sin(angle));
    }
    addRounded(canvas, corners, cuts);
}

}  // namespace

void star(Canvas& canvas, const Rect& box, const Colour& colour) {
    addStar(canvas, box, 0, {0.16, 0.06});
    canvas.fill(colour);
}

void starOutline(Canvas& canvas, const Rect& box, const Colour& colour) {
    const double width = std::min(box.width, box.height) * 0.075;
    // The round joins blunt the points like those of the filled star: less than half the line inward.
    addStar(canvas, box, width * 0.22, {0.04, 0.04});
    canvas.stroke(colour, width, LineCap::round, LineJoin::round);
}

void padlock(Canvas& canvas, const Rect& box, const Colour& colour) {
    const Rect r = fitted(box, 0.72);
    const double w = r.width;
    const double bodyTop = r.y + r.height * 0.43;
    // Body and shackle are one path, both clockwise, so that they join without a seam.
    canvas.addRoundedRect({r.x, bodyTop, w, r.y + r.height - bodyTop}, w * 0.14);
    const double line = w * 0.135;
    const double outer = w * 0.345;
    const double cx = r.x + w / 2;
    const double bend = r.y + outer;
    const double foot = bodyTop + line;
    canvas.moveTo(cx - outer, foot);
    canvas.lineTo(cx - outer, bend);
    canvas.addArc(cx, bend, outer, pi, 2 * pi);
    canvas.lineTo(cx + outer, foot);
    canvas.lineTo(cx + outer - line, foot);
    canvas.lineTo(cx + outer - line, bend);
    canvas.addArc(cx, bend, outer - line, 2 * pi, pi);
    canvas.lineTo(cx - outer + line, foot);
    canvas.closePath();
    canvas.fill(colour);
}

void waves(Canvas& canvas, const Rect& box, const Colour& colour) {
    const Rect r = fitted(box, 1.2);
    const double line = r.height * 0.12;
    const double left = r.x + line / 2;
    const double length = r.width - line;
    const double swing = r.height * 0.1;
    const double quarter = length / 6;  // one and a half waves, in half waves of 2 quarters
    for (int row = 0; row < 3; ++row) {
        const double y = r.y + r.height * (0.2 + 0.3 * row);
        canvas.moveTo(left, y + swing / 2);
        double x = left;
        for (int half = 0; half < 3; ++half) {
            const double up = half % 2 == 0 ? -1 : 1;
            const double from = y - up * swing / 2;
            const double to = y - up * swing / 2;
            canvas.curveTo(x + quarter * 0.75, from + up * swing * 1.5, x + quarter * 1.25,
                           to + up * swing * 1.5, x + quarter * 2, to);
            x += quarter * 2;
        }
        canvas.stroke(colour, line, LineCap::round, LineJoin::round);
    }
}

void questionMark(Canvas& canvas, const Rect& box, const Colour& colour) {
    const Rect r = fitted(box, 0.62);
    const double line = r.height * 0.13;
    const double cx = r.x + r.width / 2;
    const double radius = r.width / 2 - line / 2;
    const double cy = r.y + line / 2 + radius;
    // A hook that runs back under itself into a stem.
    const double leave = 0.22 * pi;
    canvas.addArc(cx, cy, radius, pi * 1.06, 2 * pi + leave);
    const double stemTop = r.y + r.height * 0.60;
    const double stemEnd = r.y + r.height * 0.70;
    const double x = cx + radius * std::cos(leave);
    const double y = cy + radius * std::sin(leave);
    canvas.curveTo(x - radius * 0.35, y + radius * 0.42, cx, stemTop - radius * 0.2, cx, stemEnd);
    canvas.stroke(colour, line, LineCap::round, LineJoin::round);
    const double dot = line * 1.25;
    canvas.addEllipse({cx - dot / 2, r.y + r.height - dot, dot, dot});
    canvas.fill(colour);
}

}  // namespace gull::GlyphShapes
