#pragma once

#include "Engine/Gl/GlObjects.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

namespace gull {

/// An attribute of interleaved vertices, all floats.
struct VertexAttribute {
    unsigned location = 0;
    int components = 0;
    std::size_t offset = 0;  ///< bytes from the vertex's start
};

/// Vertices that are uploaded for one draw and replaced for the next.
class VertexStream {
  public:
    /// `stride`: bytes from vertex to vertex.
    VertexStream(StateKeeper& keeper, std::size_t stride, std::initializer_list<VertexAttribute> attributes);

    /// Returns how many vertices `values` makes.
    std::uint32_t upload(const std::vector<float>& values);
    unsigned vertexArray() const { return array_.name(); }

  private:
    std::size_t stride_;
    GlVertexArray array_;
    GlBuffer buffer_;
};

/// Vertices and indices that are uploaded once. A default one is empty.
class IndexedVertices {
  public:
    IndexedVertices() = default;
    IndexedVertices(StateKeeper& keeper, std::span<const std::byte> vertices, std::size_t stride,
                    std::initializer_list<VertexAttribute> attributes,
                    const std::vector<std::uint32_t>& indices);

    unsigned vertexArray() const { return array_.name(); }

  private:
    GlVertexArray array_;
    GlBuffer vertices_;
    GlBuffer indices_;
};

}  // namespace gull
