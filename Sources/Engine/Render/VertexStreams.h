#pragma once

#include "Engine/Gl/Textures.h"
#include "Engine/Gl/Vertices.h"

namespace gull {

/// The vertices that change from draw to draw, by layout, and the samplers for copies of pictures.
struct VertexStreams {
    explicit VertexStreams(StateKeeper& keeper)
        : noVertices(keeper),
          areas(keeper, 2 * sizeof(float), {{0, 2, 0}}),
          places(keeper, 4 * sizeof(float), {{0, 2, 0}, {1, 2, 2 * sizeof(float)}}),
          bitmaps(keeper, 6 * sizeof(float), {{0, 2, 0}, {1, 4, 2 * sizeof(float)}}),
          particles(keeper, 9 * sizeof(float),
                    {{0, 3, 0}, {2, 2, 3 * sizeof(float)}, {4, 4, 5 * sizeof(float)}}),
          exact(makeSampler(keeper, {Filter::nearest})),
          smooth(makeSampler(keeper, {Filter::linear})) {}

    GlVertexArray noVertices;  ///< for the triangle that a vertex shader makes by itself
    VertexStream areas;        ///< pixel x, y
    VertexStream places;       ///< x, y in clip space, then a place on a picture
    VertexStream bitmaps;      ///< x, y in clip space, then a colour or a place on a bitmap
    VertexStream particles;    ///< position, texture coordinates, colour
    GlSampler exact;
    GlSampler smooth;
};

}  // namespace gull
