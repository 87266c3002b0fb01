#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/ItemParts.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/Xorshift.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <iterator>

namespace gull::itemParts {

namespace {

using primitives::box;

constexpr double width = 1.1, height = 0.55, depth = 0.7, wall = 0.05;
constexpr double top = height / 2;
constexpr double straps[] = {-0.42, 0.42};

// The lid's cross-section: half an ellipse over the hinge, which is its origin.
constexpr double lidRadius = 0.35, lidRise = 0.55 * lidRadius;
constexpr int staves = 9;

/// A point of the lid: `turn` from 0 at its front edge to pi at the hinge, `inset` below its surface.
glm::dvec3 onLid(double x, double turn, double inset = 0) {
    return {x, (lidRise - inset) * std::sin(turn), lidRadius + (lidRadius - inset) * std::cos(turn)};
}

double staveTurn(int stave) {
    return std::numbers::pi * stave / staves;
}

/// Flat faces, which turn themselves outward and show boards that run along the chest.
class Joiner {
  public:
    MeshBuilder mesh;

    void face(const glm::dvec3& a, const glm::dvec3& b, const glm::dvec3& c, const glm::dvec3& d,
              const glm::dvec3& outward) {
        const glm::dvec3 across = glm::normalize(glm::cross(c - a, d - b));
        const bool right = glm::dot(across, outward) > 0;
        const glm::dvec3 normal = right ? across : -across;
        const auto vertex = [&](const glm::dvec3& p) { return mesh.vertex(p, normal, boards(p, normal)); };
        const std::uint32_t ia = vertex(a), ib = vertex(b), ic = vertex(c), id = vertex(d);
        right ? mesh.quad(ia, ib, ic, id) : mesh.quad(ia, id, ic, ib);
    }

  private:
    static glm::dvec2 boards(const glm::dvec3& p, const glm::dvec3& normal) {
        const glm::dvec3 n = glm::abs(normal);
        const double along = n.x > 0.7 ? p.z : p.x;
        const double up = n.y > 0.7 ? p.z : p.y;
        return {along / width + 0.5, up / height + 0.5};
    }
};

/// The corners of an upright box with cut edges, seen from above, from +x toward +z.
std::vector<glm::dvec2> outline(double x, double z, double cut) {
    return {{x, -z + cut}, {x, z - cut},   {x - cut, z},   {-x + cut, z},
            {-x, z - cut}, {-x, -z + cut}, {-x + cut, -z}, {x - cut, -z}};
}

Geometry boxOfBoards() {
    Joiner joiner;
    const auto outer = outline(width / 2, depth / 2, 0.03);
    const auto inner = outline(width / 2 - wall, depth / 2 - wall, 0.005);
    const auto at = [](const glm::dvec2& corner, double y) { return glm::dvec3(corner.x, y, corner.y); };
    for (std::size_t i = 0; i < outer.size(); ++i) {
        const std::size_t next = (i + 1) % outer.size();
        const glm::dvec3 away = at(outer[i] + outer[next], 0);
        joiner.mesh.setColour(glm::dvec3(1));
        joiner.face(at(outer[i], -top), at(outer[next], -top), at(outer[next], top), at(outer[i], top), away);
        joiner.mesh.setColour(glm::dvec3(1.25));
        joiner.face(at(outer[i], top), at(outer[next], top), at(inner[next], top), at(inner[i], top),
                    {0, 1, 0});
        joiner.mesh.setColour(glm::dvec3(0.4));
        joiner.face(at(inner[i], 0), at(inner[next], 0), at(inner[next], top), at(inner[i], top), -away);
    }
    joiner.mesh.setColour(glm::dvec3(0.6));
    for (const std::size_t i : {std::size_t{1}, std::size_t{3}, std::size_t{5}})
        joiner.face(at(outer[0], -top), at(outer[i], -top), at(outer[i + 1], -top),
                    at(outer[(i + 2) % outer.size()], -top), {0, -1, 0});
    return joiner.mesh.take();
}

/// A half drum of staves, hollow, with its two ends.
Geometry lidOfStaves() {
    Joiner joiner;
    constexpr double x = width / 2, within = x - wall;
    const glm::dvec3 axis(0, 0, lidRadius);
    for (int i = 0; i < staves; ++i) {
        const double from = staveTurn(i), to = staveTurn(i + 1);
        const glm::dvec3 away = onLid(0, (from + to) / 2) - axis;
        joiner.mesh.setColour(glm::dvec3(i % 2 == 0 ? 1.0 : 0.86));
        joiner.face(onLid(-x, from), onLid(x, from), onLid(x, to), onLid(-x, to), away);
        joiner.mesh.setColour(glm::dvec3(i % 2 == 0 ? 0.5 : 0.42));
        joiner.face(onLid(-within, from, wall), onLid(within, from, wall), onLid(within, to, wall),
                    onLid(-within, to, wall), -away);
        for (const double side : {-1.0, 1.0}) {
            const glm::dvec3 end(side * x, 0, lidRadius), inner(side * within, 0, lidRadius);
            joiner.mesh.setColour(glm::dvec3(0.95));
            joiner.face(end, onLid(side * x, from), onLid(side * x, to), end, {side, 0, 0});
            joiner.mesh.setColour(glm::dvec3(0.4));
            joiner.face(inner, onLid(side * within, from, wall), onLid(side * within, to, wall), inner,
                        {-side, 0, 0});
        }
    }
    joiner.mesh.setColour(glm::dvec3(1.25));
    const double back = 0, front = 2 * lidRadius;
    const glm::dvec3 down(0, -1, 0);
    for (const double z : {back, front - wall})
        joiner.face({-x, 0, z}, {x, 0, z}, {x, 0, z + wall}, {-x, 0, z + wall}, down);
    for (const double left : {-x, within})
        joiner.face({left, 0, back + wall}, {left + wall, 0, back + wall}, {left + wall, 0, front - wall},
                    {left, 0, front - wall}, down);
    return joiner.mesh.take();
}

/// A rivet's head at `at`, looking along `out`.
void rivet(Joiner& joiner, const glm::dvec3& at, const glm::dvec3& out) {
    constexpr int sides = 6;
    constexpr double radius = 0.015, rise = 0.013;
    const glm::dvec3 right(1, 0, 0), up = glm::cross(out, right);
    const auto rim = [&](int k) {
        const double turn = 2 * std::numbers::pi * k / sides;
        return at + radius * (right * std::cos(turn) + up * std::sin(turn));
    };
    const glm::dvec3 head = at + rise * out;
    for (int k = 0; k < sides; ++k) joiner.face(rim(k), rim(k + 1), head, head, rim(k) - at + out * radius);
}

/// A plate cut after `outline` (seen from the front, from its top left clockwise), its edge filed down.
void plate(Joiner& joiner, const std::vector<glm::dvec2>& outline, const glm::dvec3& at, double thickness) {
    glm::dvec2 middle(0);
    for (const glm::dvec2& corner : outline) middle += corner / static_cast<double>(outline.size());
    const auto point = [&](std::size_t i, double share, double z) {
        const glm::dvec2 p = middle + (outline[i % outline.size()] - middle) * share;
        return at + glm::dvec3(p, z);
    };
    const glm::dvec3 centre = at + glm::dvec3(middle, thickness);
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const glm::dvec3 away = point(i, 1, 0) + point(i + 1, 1, 0) - 2.0 * (at + glm::dvec3(middle, 0));
        joiner.face(point(i, 1, 0), point(i + 1, 1, 0), point(i + 1, 0.88, thickness),
                    point(i, 0.88, thickness), away + glm::dvec3(0, 0, 0.1));
        joiner.face(point(i, 0.88, thickness), point(i + 1, 0.88, thickness), centre, centre, {0, 0, 1});
    }
}

/// A bail that hangs from a plate at one end of the box; `side` is 1 or -1.
void handle(Joiner& joiner, double side) {
    constexpr double radius = 0.013, halfLength = 0.1, drop = 0.09;
    const double end = side * width / 2, out = side * (width / 2 + 0.03 - radius);
    const auto add = [&](const Geometry& shape, const glm::dvec3& at, double turn) {
        Node place;
        place.position = at;
        place.eulerAngles = {turn, 0, 0};
        joiner.mesh.append(shape, place.localTransform());
    };
    add(box(0.016, 0.09, 0.26, 0.004), {end, 0.06, 0}, 0);
    add(primitives::cylinder(radius, 2 * halfLength, 8), {out, 0.06 - drop, 0}, quarter);
    for (const double z : {-halfLength, halfLength}) {
        add(primitives::cylinder(radius, drop, 8), {out, 0.06 - drop / 2, z}, 0);
        add(box(0.05, 0.03, 0.03, 0.006), {side * (width / 2 + 0.004), 0.06, z}, 0);
    }
}

/// Straps round the box, hinges, handles, and the lock with its keyhole.
Geometry boxFittings() {
    Joiner joiner;
    const auto add = [&](const Geometry& shape, const glm::dvec3& at) {
        joiner.mesh.append(shape, glm::translate(glm::dmat4(1), at));
    };
    constexpr double thick = 0.014, front = depth / 2;
    for (const double x : straps) {
        for (const double z : {-front, front}) add(box(0.07, 0.57, 2 * thick), {x, 0, z});
        add(box(0.07, 2 * thick, depth), {x, -top, 0});
        for (const double y : {-0.2, 0.0, 0.2}) rivet(joiner, {x, y, front + thick}, {0, 0, 1});
        Node hinge;
        hinge.position = {0.7 * x, top, -front - 0.015};
        hinge.eulerAngles = {0, 0, quarter};
        joiner.mesh.append(primitives::cylinder(0.024, 0.16, 8), hinge.localTransform());
    }
    for (const double side : {-1.0, 1.0}) handle(joiner, side);
    plate(joiner, {{-0.1, 0.12}, {0.1, 0.12}, {0.1, 0}, {0.07, -0.07}, {0, -0.1}, {-0.07, -0.07}, {-0.1, 0}},
          {0, 0.1, front}, 0.02);
    joiner.mesh.setColour(glm::dvec3(0.015));
    plate(joiner,
          {{-0.012, 0.05},
           {0.012, 0.05},
           {0.026, 0.03},
           {0.011, 0.01},
           {0.018, -0.05},
           {-0.018, -0.05},
           {-0.011, 0.01},
           {-0.026, 0.03}},
          {0, 0.07, front + 0.018}, 0.004);
    return joiner.mesh.take();
}

/// A strap that follows the lid from one turn to another.
void lidStrap(Joiner& joiner, double x, double half, int fromStave, int toStave) {
    constexpr double proud = -0.02;
    for (int i = fromStave; i < toStave; ++i) {
        const double from = staveTurn(i), to = staveTurn(i + 1);
        const glm::dvec3 away = onLid(0, (from + to) / 2) - glm::dvec3(0, 0, lidRadius);
        const double edge = 0.7 * half;
        joiner.face(onLid(x - edge, from, proud), onLid(x + edge, from, proud), onLid(x + edge, to, proud),
                    onLid(x - edge, to, proud), away);
        for (const double side : {-1.0, 1.0})
            joiner.face(onLid(x + side * half, from), onLid(x + side * edge, from, proud),
                        onLid(x + side * edge, to, proud), onLid(x + side * half, to),
                        away + glm::dvec3(side, 0, 0));
    }
}

/// The two hoops, the plate on the crown, and the hasp that falls over the lock.
Geometry lidFittings() {
    Joiner joiner;
    const glm::dvec3 axis(0, 0, lidRadius);
    for (const double x : straps) {
        lidStrap(joiner, x, 0.035, 0, staves);
        for (const int stave : {1, 3})
            rivet(joiner, onLid(x, staveTurn(stave) + 0.17, -0.016),
                  glm::normalize(onLid(x, staveTurn(stave) + 0.17) - axis - glm::dvec3(x, 0, 0)));
    }
    lidStrap(joiner, 0, 0.04, 0, 5);
    joiner.mesh.append(box(0.16, 0.04, 0.2, 0.012), glm::translate(glm::dmat4(1), glm::dvec3(0, 0.18, 0.36)));
    plate(joiner,
          {{-0.05, 0.06}, {0.05, 0.06}, {0.05, -0.05}, {0.025, -0.075}, {-0.025, -0.075}, {-0.05, -0.05}},
          {0, 0, 2 * lidRadius + 0.022}, 0.014);
    return joiner.mesh.take();
}

/// How high the hoard stands: half an ellipsoid in the box, filled up at its corners.
double hoardHeight(double x, double z) {
    const double left = 1 - x * x / 0.25 - z * z / 0.09;
    return std::max(0.26 + 0.14 * std::sqrt(std::max(left, 0.0)), 0.27);
}

/// A coin with a raised rim, `detail` segments around; its back is not seen.
Geometry smallCoin(double radius, double thickness, int detail, bool fine) {
    MeshBuilder mesh;
    const double y = thickness / 2;
    const auto add = [&](double share, double y0, double lean, int k) {
        const double turn = 2 * std::numbers::pi * k / detail, c = std::cos(turn), s = std::sin(turn);
        return mesh.vertex({share * radius * c, y0, share * radius * s},
                           glm::normalize(glm::dvec3(lean * c, 1 - std::abs(lean), lean * s)));
    };
    // Bands from the edge inward: side, filed rim, the slope down to the field. `lean`: of the normal.
    struct Band {
        double from, fromY, to, toY, lean, toLean, light;
    };
    const std::vector<Band> bands =
        fine ? std::vector<Band>{{1, -y, 1, 0.6 * y, 1, 1, 0.8},
                                 {1, 0.6 * y, 0.82, y, 0.5, 0.1, 1.1},
                                 {0.82, y, 0.74, 0.3 * y, -0.4, -0.4, 0.55}}
             : std::vector<Band>{{1, -y, 1, y, 1, 1, 0.8}, {1, y, 0.72, y, 0.45, -0.1, 1.05}};
    for (const Band& band : bands) {
        mesh.setColour(glm::dvec3(band.light));
        for (int k = 0; k < detail; ++k)
            mesh.quad(add(band.from, band.fromY, band.lean, k + 1), add(band.from, band.fromY, band.lean, k),
                      add(band.to, band.toY, band.toLean, k), add(band.to, band.toY, band.toLean, k + 1));
    }
    mesh.setColour(glm::dvec3(0.85));
    const double share = bands.back().to, fieldY = bands.back().toY;
    const std::uint32_t middle = mesh.vertex({0, fieldY, 0}, {0, 1, 0});
    for (int k = 0; k < detail; ++k)
        mesh.triangle(middle, add(share, fieldY, 0, k + 1), add(share, fieldY, 0, k));
    return mesh.take();
}

/// A heap of coins with a few stones among them. All of it stays under the closed lid.
Geometry hoard(bool fine) {
    MeshBuilder mesh;
    constexpr int columns = 10, rows = 6;
    constexpr double halfWidth = width / 2 - wall, halfDepth = depth / 2 - wall;
    mesh.setColour({0.3, 0.24, 0.2});  // the dark between the coins
    std::vector<std::uint32_t> grid;
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column <= columns; ++column) {
            const double x = halfWidth * (2.0 * column / columns - 1), z = halfDepth * (2.0 * row / rows - 1);
            grid.push_back(mesh.vertex({x, hoardHeight(x, z) - 0.012, z}, {x * 0.5, 1, z * 0.8}));
        }
    for (std::size_t i = 0; i < rows; ++i)
        for (std::size_t j = 0; j < columns; ++j) {
            const std::size_t a = i * (columns + 1) + j, b = a + columns + 1;
            mesh.quad(grid[a], grid[b], grid[b + 1], grid[a + 1]);
        }

    Xorshift draws(41);
    constexpr int acrossChest = 10, deep = 6, onTop = 14, coins = acrossChest * deep + onTop;
    constexpr double thickness = 0.022;
    for (int i = 0; i < coins; ++i) {
        const double radius = 0.07 + 0.018 * draws.unit();
        // A layer that covers all of it, then some more in the middle.
        double x = draws.unit() - 0.5, z = draws.unit() - 0.5;
        if (i < acrossChest * deep) {
            const int column = i % acrossChest, row = i / acrossChest;
            x = 2 * (column + 0.5 + 0.8 * x) / acrossChest - 1;
            z = 2 * (row + 0.5 + 0.8 * z) / deep - 1;
        }
        x *= halfWidth - 0.7 * radius;
        z *= halfDepth - 0.7 * radius;
        // They lie as the heap slopes, more or less; here and there one sticks in it. Where the lid comes
        // down there is no room for that.
        const double inLid = std::sqrt(1 - std::pow(z / halfDepth, 2));
        const double tilt = (i % 9 == 4 ? 0.9 : 0.36) * inLid * inLid;
        constexpr double slope = 0.05;
        const double sx = (hoardHeight(x + slope, z) - hoardHeight(x - slope, z)) / (2 * slope);
        const double sz = (hoardHeight(x, z + slope) - hoardHeight(x, z - slope)) / (2 * slope);
        Node place;
        place.eulerAngles = {-0.7 * inLid * std::atan(sz) + tilt * (2 * draws.unit() - 0.8),
                             0.6 * draws.unit(), 0.7 * inLid * std::atan(sx) + tilt * (2 * draws.unit() - 1)};
        const double reach = radius * std::min(1.0, std::abs(std::sin(place.eulerAngles.x)) +
                                                        std::abs(std::sin(place.eulerAngles.z)));
        const double ceiling = top + (lidRise - wall) * inLid - 0.015;
        const double lies = hoardHeight(x, z) + 0.35 * reach + (i < acrossChest * deep ? 0 : 0.02);
        place.position = {x, std::min(lies, std::max(ceiling - reach, hoardHeight(x, z) - 0.03)), z};
        const double warmth = draws.unit();
        mesh.setColour(glm::dvec3(1, 0.94 + 0.1 * warmth, 0.85 + 0.5 * warmth) * (0.9 + 0.2 * draws.unit()));
        mesh.append(smallCoin(radius, thickness, fine ? 10 : 8, fine), place.localTransform());
    }
    // As metal of the hoard's own colour: a ruby, an emerald, a sapphire.
    const glm::dvec3 tints[] = {{0.8, 0.01, 0.12}, {0.06, 0.9, 1.6}, {0.06, 0.18, 6}};
    const glm::dvec2 places[] = {{-0.22, 0.1}, {0.27, 0.05}, {0.03, 0.17}};
    for (std::size_t i = 0; i < std::size(tints); ++i) {
        Node place;
        place.position = {places[i].x, hoardHeight(places[i].x, places[i].y) + 0.015, places[i].y};
        place.eulerAngles = {0.5, 0.7 * static_cast<double>(i), 0.3};
        mesh.setColour(tints[i]);
        mesh.append(cutStone(0.06, 6), place.localTransform());
    }
    return mesh.take();
}

}  // namespace

void chest(Node& outer, Textures& textures) {
    Node& parent = outer.addChild("chest");
    parent.scale = glm::dvec3(0.85);
    const MaterialRef wood = Materials::pictured(textures.planks(), 0, 0.8);
    wood->diffuseMap.wrapS = wood->diffuseMap.wrapT = Wrap::repeat;
    const MaterialRef metal = brass();

    part(parent, boxOfBoards(), {wood});
    part(parent, boxFittings(), {metal});
    Node& heap = part(parent, hoard(true), {gold()});
    heap.name = "hoard";
    coarser(heap, hoard(false));

    Node& lid = parent.addChild("lid");
    lid.position = {0, top, -depth / 2};
    part(lid, lidOfStaves(), {wood});
    part(lid, lidFittings(), {metal});
}

}  // namespace gull::itemParts
