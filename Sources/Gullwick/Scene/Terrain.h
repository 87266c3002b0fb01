#pragma once

#include "Engine/Stage/Geometry.h"
#include "GullCore/Beach.h"
#include "Gullwick/Scene/Look.h"

#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <vector>

namespace gull {

/// The shape of the beach. World units: x across, y up, z toward the viewer; the sea lies at negative z.
namespace Terrain {

inline constexpr double plotWidth = 16;  ///< the plot spans x from -8 to 8
inline constexpr double plotDepth = 10;  ///< and z from -5 (seaward) to 5

double height(double x, double z);
/// The slope of the sand along x and along z.
glm::dvec2 slope(double x, double z);
/// The world position of a plot point, on the sand.
glm::dvec3 world(const PlotPoint& point);
/// The plot point at a world position; not clamped to the plot.
PlotPoint plotPoint(double x, double z);
/// The z of the waterline in the middle of the beach (x = 0) when the water's surface is at `level`; from -20
/// to 6.
double shoreZ(double level);
/// The same at any x.
double shoreZ(double x, double level);
/// The sand as a grid of 153 x 109 vertices half a unit apart, coloured for `look`. Texture coordinates: the
/// detail (3.2 units a tile), then the plot from 0 to 1, (0, 0) at its seaward left corner.
Geometry sandGeometry(const BeachLook& look);

}  // namespace Terrain

/// The part of the sand's mesh that is the same for every look; made once.
class SandMesh {
  public:
    SandMesh();
    /// The mesh in the colours of `look`: darker where the sea wets it.
    Geometry coloured(const BeachLook& look) const;
    /// The same with every fourth vertex in each direction, for a moving camera.
    Geometry coarse(const BeachLook& look) const;
    /// The surroundings beyond the grid, to the sides and out under the sea, in coarser pieces; the sea floor
    /// takes on the water's colour with depth.
    Geometry surroundings(const BeachLook& look) const;
    /// The same in pieces twice as long, for a moving camera.
    Geometry coarseSurroundings(const BeachLook& look) const;

  private:
    struct Shade {
        double wet;    ///< 0 dry to 1 wet
        double noise;  ///< a factor about 1
    };
    Geometry bare_;
    Geometry bareSurroundings_;
    Geometry coarseSurroundings_;
    std::vector<Shade> shades_;
};

}  // namespace gull
