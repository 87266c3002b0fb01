#pragma once

#include "Gullwick/Scene/Look.h"

#include <array>
#include <vector>

namespace gull {

/// The clouds of a sky panorama: colour planes and coverage in floats, colour premultiplied by coverage.
/// Clouds are soft, so a large panorama stores them at half its size and interpolates.
class CloudLayer {
  public:
    enum Plane { red, green, blue, coverage };

    /// For a panorama of `width` pixels; `shrink` is 1 or 2.
    CloudLayer(const BeachLook& look, int width, int shrink);

    /// Row `y` of the full panorama (0 at the top), each plane interpolated to its width.
    void row(int y, std::array<std::vector<float>, 4>& out) const;

  private:
    struct Puff {
        double x;  ///< centre, pixels of the layer, y down
        double y;
        double halfWidth;
        double halfHeight;
        double blur;  ///< standard deviation of its halo
        double alpha;
        RGB colour;
        RGB lit;  ///< of its sunny side
    };

    void drawClouds(const BeachLook& look);
    void drawHalo(const Puff& puff);
    void drawBody(const Puff& puff);
    void blend(int y, int left, const std::vector<float>& cover, const RGB& colour);

    int width_;
    int height_;
    int shrink_;
    std::array<std::vector<float>, 4> planes_;
    std::vector<float> noise_;
};

}  // namespace gull
