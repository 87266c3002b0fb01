#pragma once

#include "Engine/Gl/Vertices.h"
#include "Engine/Stage/Geometry.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace gull {

/// A geometry in graphics memory. Large elements are cut into chunks of neighbouring triangles, so that a
/// small part of the picture is drawn from the few chunks that touch it.
struct Mesh {
    struct Chunk {
        std::uint32_t first = 0;  ///< index
        std::uint32_t count = 0;
        Box bounds;
    };
    struct Element {
        std::size_t firstChunk = 0;
        std::size_t chunkCount = 0;
    };

    IndexedVertices vertices;
    Box bounds;
    std::vector<Chunk> chunks;
    std::vector<Element> elements;
};

/// Orders the triangles of `geometry` so that every chunk is a run of `indices`, and describes the chunks.
/// Fills in all of `mesh` but its OpenGL objects.
void cutIntoChunks(const Geometry& geometry, Mesh& mesh, std::vector<std::uint32_t>& indices);

/// Uploads each geometry once and keeps it as long as somebody else keeps the geometry alive.
class MeshCache {
  public:
    explicit MeshCache(StateKeeper& keeper) : keeper_(keeper) {}
    /// The reference is valid until collectGarbage().
    const Mesh& mesh(const GeometryRef& geometry);
    void collectGarbage();

  private:
    struct Entry {
        std::weak_ptr<const Geometry> owner;
        Mesh mesh;
    };
    StateKeeper& keeper_;
    std::unordered_map<const Geometry*, Entry> entries_;
};

}  // namespace gull
