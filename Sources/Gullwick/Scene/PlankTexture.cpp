#include "Gullwick/Scene/PlankTexture.h"

#include "Gullwick/Scene/FloatImage.h"
#include "Gullwick/Scene/Look.h"
#include "Gullwick/Scene/Noise.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace gull {

namespace {

constexpr int size = 512;
constexpr int gap = 4;
constexpr std::array<int, 5> boardHeights{104, 97, 109, 99, 103};
constexpr RGB fresh{0.62, 0.47, 0.33};
constexpr RGB weathered{0.58, 0.53, 0.46};
constexpr RGB dark{0.09, 0.065, 0.045};

struct Knot {
    double x;
    double y;
    double radius;
};

struct Board {
    int top;
    int height;
    RGB colour;
    std::vector<Knot> knots;
    int joint;  ///< column where two boards meet end to end
};

/// Signed distance round the tile.
double around(double dx) {
    return dx - size * std::round(dx / size);
}

class Painter {
  public:
    Painter() : wood_(size, size, {0, 0, 0, 1}) {}

    void fillBoard(const Board& board, const Noise::Heights& noise) {
        for (int y = board.top; y < board.top + board.height; ++y) {
            // Worn edges: lighter where the light catches them, darker below.
            const int fromTop = y - board.top;
            const int fromBottom = board.top + board.height - gap - 1 - y;
            const double edge = 0.10 * std::exp(-fromTop / 2.0) - 0.28 * std::exp(-fromBottom / 3.0);
            for (int x = 0; x < size; ++x) {
                // Noise drawn out along the board, by taking it eight rows at a time.
                const std::size_t at = static_cast<std::size_t>((y * 8) % size) * size +
                                       static_cast<std::size_t>((x + board.top * 7) % size);
                const std::size_t blotch = static_cast<std::size_t>(y) * size + static_cast<std::size_t>(x);
                const double streaks = static_cast<double>(noise[at]);
                const double blotches = static_cast<double>(noise[blotch]);
                const double tone = 1 + 0.10 * streaks + 0.16 * blotches + edge;
                set(x, y, board.colour.mixed(weathered, std::clamp(0.35 + blotches, 0.0, 1.0)).scaled(tone));
            }
        }
    }

    /// One line of the grain, which flows round the knots of its board.
    void grainLine(const Board& board, Xorshift& draws) {
        const double y0 = board.top + draws.unit() * (board.height - gap);
        const double alpha = 0.05 + 0.20 * draws.unit() * draws.unit();
        const bool light = draws.unit() < 0.3;
        const double swing = 0.8 + 2.6 * draws.unit();
        const double phase = 2 * std::numbers::pi * draws.unit();
        const double phase2 = 2 * std::numbers::pi * draws.unit();
        const double fade = 2 * std::numbers::pi * draws.unit();
        const RGB ink = light ? RGB{0.82, 0.74, 0.62} : RGB{0.24, 0.17, 0.11};
        for (int x = 0; x < size; ++x) {
            const double t = 2 * std::numbers::pi * x / size;
            double y = y0 + swing * std::sin(t + phase) + 0.35 * swing * std::sin(3 * t + phase2);
            for (const Knot& knot : board.knots) {
                const double dx = around(x - knot.x) / (2.6 * knot.radius);
                if (std::abs(dx) > 2.5) continue;
                const double dy = y - knot.y;
                const double push = knot.radius * knot.radius / (std::abs(dy) + knot.radius);
                y += (dy < 0 ? -1 : 1) * push * std::exp(-dx * dx);
            }
            const double strength = alpha * (0.6 + 0.4 * std::sin(2 * t + fade));
            const double floor = std::floor(y - 0.5);
            const double part = y - 0.5 - floor;
            const int row = static_cast<int>(floor);
            if (row < board.top || row + 1 >= board.top + board.height - gap) continue;
            blend(x, row, ink, strength * (1 - part));
            blend(x, row + 1, ink, strength * part);
        }
    }

    void knot(const Knot& knot) {
        const int reach = static_cast<int>(knot.radius * 2) + 2;
        for (int dy = -reach; dy <= reach; ++dy) {
            for (int dx = -reach; dx <= reach; ++dx) {
                const int x = static_cast<int>(knot.x) + dx;
                const int y = static_cast<int>(knot.y) + dy;
                const double distance = std::hypot(dx / 1.5, dy) / knot.radius;
                if (distance > 1.1) continue;
                const double rings = 0.5 + 0.5 * std::cos(distance * 17);
                const double inside = std::clamp((1.1 - distance) * 3, 0.0, 1.0);
                blend(x, y, {0.2, 0.13, 0.08}, inside * (0.25 + 0.3 * rings + 0.3 * (1 - distance)));
            }
        }
    }

    void jointAndNails(const Board& board) {
        for (int y = board.top; y < board.top + board.height; ++y) {
            for (int dx = -3; dx <= 3; ++dx) {
                blend(board.joint + dx, y, dark, std::abs(dx) <= 1 ? 0.9 : 0.18 * (4 - std::abs(dx)));
            }
        }
        for (const int side : {-14, 14}) {
            for (const double part : {0.22, 0.74}) nail(board.joint + side, board.top + part * board.height);
        }
    }

    void gapBelow(const Board& board) {
        const int bottom = board.top + board.height;
        for (int y = bottom - gap; y < bottom; ++y) {
            for (int x = 0; x < size; ++x) set(x, y, dark);
        }
    }

    Image image() const { return wood_.image(); }

  private:
    static FloatImage::Pixel pixel(const RGB& colour) {
        return {static_cast<float>(colour.r), static_cast<float>(colour.g), static_cast<float>(colour.b), 1};
    }
    void set(int x, int y, const RGB& colour) { wood_.at(x, y) = pixel(colour); }
    void blend(int x, int y, const RGB& colour, double alpha) {
        wood_.blend(x, y, pixel(colour), static_cast<float>(alpha));
    }

    /// A rusty head and the streak that rain washed out of it.
    void nail(double x, double y) {
        for (int i = 0; i < 26; ++i) {
            blend(static_cast<int>(x) + (i * 7 % 3) - 1, static_cast<int>(y) + 3 + i, {0.30, 0.18, 0.10},
                  0.30 * (1 - i / 26.0));
        }
        const FloatImage::Disc shade{x, y + 0.6, 4.2, {0.12F, 0.09F, 0.08F, 1}, 0.7};
        const FloatImage::Disc head{x, y, 3.2, {0.33F, 0.27F, 0.24F, 1}, 1};
        const FloatImage::Disc glint{x - 0.8, y - 0.9, 1.2, {0.55F, 0.48F, 0.42F, 1}, 0.8};
        for (const auto& disc : {shade, head, glint}) wood_.add(disc);
    }

    FloatImage wood_;
};

}  // namespace

Image plankTexture() {
    Painter painter;
    Xorshift draws(101);
    const Noise::Heights noise = Noise::fractal(size, 41, 8, 5);
    int top = 0;
    for (const int height : boardHeights) {
        Board board{top, height, fresh.scaled(0.88 + 0.2 * draws.unit()), {}, 0};
        board.joint = static_cast<int>(draws.unit() * size);
        const int knots = draws.unit() < 0.65 ? 1 : 2;
        for (int i = 0; i < knots; ++i) {
            const double x = board.joint + size * (0.25 + 0.5 * draws.unit());
            const double y = top + height * (0.3 + 0.4 * draws.unit());
            board.knots.push_back({std::fmod(x, size), y, 5 + 6 * draws.unit()});
        }
        painter.fillBoard(board, noise);
        for (int i = 0; i < 62; ++i) painter.grainLine(board, draws);
        for (const Knot& knot : board.knots) painter.knot(knot);
        painter.jointAndNails(board);
        painter.gapBelow(board);
        top += height;
    }
    return painter.image();
}

}  // namespace gull
