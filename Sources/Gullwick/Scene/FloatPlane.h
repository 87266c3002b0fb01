#pragma once

#include <cstddef>
#include <vector>

namespace gull {

/// Values that discs are laid onto before they become 8-bit pixels: one colour plane or one of coverage. Its
/// sides are powers of two, and what leaves on one side of a wrapping axis comes in on the other.
class FloatPlane {
  public:
    /// Stops the program unless both sides are powers of two.
    FloatPlane(int width, int height, float value);

    int width() const { return width_; }
    int height() const { return height_; }
    float* row(int y) { return &values_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_)]; }
    const float* row(int y) const {
        return &values_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_)];
    }

    /// How a disc's coverage falls off: a hard edge smoothed over one pixel, or a bell that ends at the
    /// radius.
    enum class Edge { hard, soft };
    /// Mixes `colours[i]` into `planes[i]` inside a disc about (x, y), pixels, y down. Wraps across always,
    /// up and down only when asked.
    template <std::size_t n>
    static void disc(FloatPlane* const (&planes)[n], const float (&colours)[n], double x, double y,
                     double radius, double alpha, Edge edge, bool wrapDown);

  private:
    /// Fills `cover` with the coverage of columns `left`.. of row `y`.
    static void coverRow(std::vector<float>& cover, int left, int y, double cx, double cy, double radius,
                         double alpha, Edge edge);
    void mix(int x, int y, const std::vector<float>& cover, float colour);

    int width_;
    int height_;
    std::vector<float> values_;
};

template <std::size_t n>
void FloatPlane::disc(FloatPlane* const (&planes)[n], const float (&colours)[n], double x, double y,
                      double radius, double alpha, Edge edge, bool wrapDown) {
    static thread_local std::vector<float> cover;
    const double reach = radius + 0.5;
    const int left = static_cast<int>(x - reach + 1024) - 1024;
    const int right = static_cast<int>(x + reach + 1024) - 1024;
    const int top = static_cast<int>(y - reach + 1024) - 1024;
    const int bottom = static_cast<int>(y + reach + 1024) - 1024;
    cover.resize(static_cast<std::size_t>(right - left + 1));
    for (int py = top; py <= bottom; ++py) {
        if (!wrapDown && (py < 0 || py >= planes[0]->height_)) continue;
        coverRow(cover, left, py, x, y, radius, alpha, edge);
        for (std::size_t i = 0; i < n; ++i) planes[i]->mix(left, py, cover, colours[i]);
    }
}

}  // namespace gull
