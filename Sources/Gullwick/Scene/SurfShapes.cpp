#include "Gullwick/Scene/SurfShapes.h"

#include "Engine/Stage/MeshBuilder.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/geometric.hpp>
#include <utility>

namespace gull::SurfShapes {

namespace {

constexpr double width = 320;
constexpr double inView = 16;  // to either side; farther out pieces are longer
constexpr double foamPiece = 0.4, filmPiece = 0.8, longPiece = 4;
constexpr double foamOnSand = 0.03;  // height of the foam's landward edge above the sand
constexpr glm::dvec2 wavesTile(320, 200);

/// A smooth, irregular curve along the shore, -1 to 1; `phase` shifts it.
double wander(double x, double phase) {
    return 0.5 * std::sin(0.21 * x + phase) + 0.3 * std::sin(0.53 * x - 1.7 * phase) +
           0.2 * std::sin(1.13 * x + 2.3 * phase);
}

/// A place in a cut through a strip.
struct Point {
    glm::dvec3 position;
    glm::dvec3 normal;
    double v;      ///< of the picture
    double alpha;  ///< times the picture's
};

/// A strip along x, all of `width`, from its cuts; the first points of the cuts are its right edge, seen
/// along +x.
template <typename CutAt>
GeometryRef strip(double piece, CutAt cutAt) {
    std::vector<double> places{-width / 2};
    for (double x = -Shoreline::reach; x < Shoreline::reach + 1e-9;
         x += std::abs(x + 1e-9) < inView ? piece : longPiece)
        places.push_back(x);
    places.push_back(width / 2);
    MeshBuilder mesh;
    std::vector<float> alphas;
    std::vector<std::uint32_t> last;
    for (const double x : places) {
        std::vector<std::uint32_t> column;
        for (const Point& point : cutAt(x)) {
            column.push_back(mesh.vertex(point.position, point.normal, {x / width + 0.5, point.v}));
            alphas.push_back(static_cast<float>(point.alpha));
        }
        for (std::size_t i = 0; i + 1 < last.size(); ++i)
            mesh.quad(last[i], column[i], column[i + 1], last[i + 1]);
        last = std::move(column);
    }
    Geometry geometry = mesh.take();
    for (std::size_t i = 0; i < alphas.size(); ++i) geometry.vertices[i].colour.a = alphas[i];
    return std::make_shared<const Geometry>(std::move(geometry));
}

}  // namespace

GeometryRef breaker(double depth, double phase) {
    return strip(1, [&](double x) {
        const double bend = 0.55 * wander(x, phase);
        const double broken = std::clamp(0.55 + 0.75 * wander(1.4 * x, 4 + 2.1 * phase), 0.06, 1.0);
        const double front = 0.08 * wander(3.7 * x, 1 + phase);
        const auto row = [&](double v, double alpha) {
            return Point{{x, (v - 0.5) * depth + bend + front * (1 - v), 0}, {0, 0, 1}, v, alpha * broken};
        };
        return std::array{row(0, 0), row(0.1, 1), row(0.3, 0.8), row(1, 0)};
    });
}

GeometryRef foam(const Shoreline& shore, double depth, double base, double middle) {
    return strip(foamPiece, [&](double x) {
        const double tongue = 0.17 * wander(1.7 * x, 1.3) + 0.04 * wander(3 * x, 0.4);
        const double thick = std::clamp(0.75 + 0.5 * wander(1.9 * x, 5.1), 0.3, 1.0);
        const double front = shore.z(x) + 0.25 - tongue;
        const auto row = [&](double v, double alpha) {
            const double z = front - v * (depth - tongue);
            const double up = std::max(0.0, Terrain::height(x, z) + foamOnSand - base);
            return Point{{x, middle - z, up}, {0, 0, 1}, v, alpha * thick};
        };
        return std::array{row(0, 0), row(0.06, 1), row(0.4, 0.8), row(1, 0)};
    });
}

GeometryRef film(const Shoreline& bottom, const Shoreline& top) {
    return strip(filmPiece, [&](double x) {
        const double end = top.z(x) + 0.12 + 0.1 * wander(1.9 * x, 2.2), begin = bottom.z(x) - 0.2;
        const auto row = [&](double share, double height) {
            const double z = std::lerp(begin, end, share);
            const glm::dvec2 slope = Terrain::slope(x, z);
            return Point{{x, Terrain::height(x, z) + height, z},
                         glm::normalize(glm::dvec3(-slope.x, 1, -slope.y)),
                         -z / wavesTile.y,
                         1};
        };
        return std::array{row(1, -0.008),       row(0.9, 0.5 * filmHeight), row(0.7, filmHeight),
                          row(0.5, filmHeight), row(0.25, filmHeight),      row(0, 0)};
    });
}

}  // namespace gull::SurfShapes
