#pragma once

#include "Engine/Stage/Geometry.h"

namespace gull::primitives {

/// Meshes, all centred on the origin. Textures appear upright and unmirrored on them. Lengths are in world
/// units and positive; a radius, length or count that cannot make the shape stops the program, printing the
/// values.

/// `width` along x, `height` along y; faces +z. Not subdivided.
Geometry plane(double width, double height);
/// Edges cut by `chamfer` (0: sharp; at most 45 % of the shortest side is cut), rounded normals on the cut.
/// Every face shows the whole texture.
Geometry box(double width, double height, double length, double chamfer = 0);
/// Poles on the y axis; `segments` around, half as many from pole to pole.
Geometry sphere(double radius, int segments = 48);
/// An icosahedron each of whose faces is divided `segments` times along its edges; flat facets when
/// `faceted`.
Geometry geodesicSphere(double radius, int segments, bool faceted = false);
/// Axis along y. Elements: side, top, bottom.
Geometry cylinder(double radius, double height, int segments = 48);
/// A cone or its frustum, axis along y. Elements: side, then the ends whose radius is above 0 (top, bottom).
Geometry cone(double topRadius, double bottomRadius, double height, int segments = 48);
/// Axis along y: lies in the xz plane.
Geometry torus(double ringRadius, double pipeRadius, int ringSegments = 48, int pipeSegments = 24);
/// A pipe with a wall, axis along y.
Geometry tube(double innerRadius, double outerRadius, double height, int segments = 48);
/// Axis along y; `height` counts the caps.
Geometry capsule(double capRadius, double height, int segments = 24);
/// A rectangular base at y = 0 (`width` along x, `length` along z) with its apex at (0, height, 0).
Geometry pyramid(double width, double height, double length);

}  // namespace gull::primitives
