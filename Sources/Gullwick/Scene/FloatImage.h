#pragma once

#include "Engine/Raster/Image.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace gull {

/// A picture with four floats per pixel, onto which thousands of discs are painted before it is rounded to 8
/// bits. Its sides are powers of two; it wraps around at its edges, so that it tiles.
class FloatImage {
  public:
    using Pixel = std::array<float, 4>;

    /// Stops the program unless both sides are powers of two.
    FloatImage(int width, int height, const Pixel& fill);

    int width() const { return width_; }
    int height() const { return height_; }
    /// Any coordinates: they wrap.
    Pixel& at(int x, int y) {
        return pixels_[static_cast<std::size_t>(y & (height_ - 1)) * static_cast<std::size_t>(width_) +
                       static_cast<std::size_t>(x & (width_ - 1))];
    }
    const Pixel& at(int x, int y) const { return const_cast<FloatImage*>(this)->at(x, y); }

    /// Moves a pixel toward `colour` by `alpha`, all four components.
    void blend(int x, int y, const Pixel& colour, float alpha) { mix(at(x, y), colour, alpha); }

    struct Disc {
        double x = 0;  ///< centre, pixels, y down
        double y = 0;
        double radius = 0;
        Pixel colour{};
        double alpha = 1;
        /// Soft discs are strongest in the middle and fade out at the radius; others have an edge smoothed
        /// over one pixel.
        bool soft = false;
    };
    void add(const Disc& disc);
    /// The same picture as add() of all discs in order on `fill` followed by image(). It is painted in bands
    /// of rows that fit the processor's cache and never held in floats as a whole, which takes a fraction of
    /// the time for thousands of discs on a large picture. Sides as in the constructor.
    static Image painted(int width, int height, const Pixel& fill, const std::vector<Disc>& discs);

    /// Rounded, clamped to 0..1; the fourth component is the alpha.
    Image image() const;

  private:
    static void mix(Pixel& pixel, const Pixel& colour, float alpha) {
        for (std::size_t c = 0; c < 4; ++c) pixel[c] += (colour[c] - pixel[c]) * alpha;
    }
    /// The rows that a FloatImage holds of a picture `height` rows high.
    struct Band {
        int from;
        int to;
        int height;
    };
    /// Paints the part of a disc that lies in `band` into its rows.
    void addRows(const Disc& disc, const Band& band);
    template <typename Coverage>
    void addRound(const Disc& disc, double reach, const Band& band, Coverage coverage);
    /// Writes four bytes per pixel, in the form of image().
    void round(std::uint8_t* out) const;

    int width_;
    int height_;
    std::vector<Pixel> pixels_;
};

}  // namespace gull
