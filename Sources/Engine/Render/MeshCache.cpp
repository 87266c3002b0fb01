#include "Engine/Render/MeshCache.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <span>

namespace gull {

namespace {

constexpr std::uint32_t trianglesPerChunk = 128;

void appendChunk(Mesh& mesh, const Geometry& geometry, std::vector<std::uint32_t>& indices,
                 std::uint32_t first) {
    Mesh::Chunk chunk{first, static_cast<std::uint32_t>(indices.size()) - first, {}};
    for (std::size_t i = first; i < indices.size(); ++i)
        chunk.bounds.include(glm::dvec3(geometry.vertices[indices[i]].position));
    mesh.bounds.include(chunk.bounds);
    mesh.chunks.push_back(chunk);
}

/// Sorts triangles into the cells of a grid over the two longest sides of the element's bounds.
void cutElement(const Geometry& geometry, const Geometry::Element& element, Mesh& mesh,
                std::vector<std::uint32_t>& indices) {
    auto corner = [&](std::uint32_t triangle, std::uint32_t k) {
        return geometry.indices[element.first + triangle * 3 + k];
    };
    std::uint32_t triangles = element.count / 3;
    if (triangles <= 2 * trianglesPerChunk) {
        auto first = static_cast<std::uint32_t>(indices.size());
        for (std::uint32_t i = 0; i < triangles * 3; ++i)
            indices.push_back(geometry.indices[element.first + i]);
        if (triangles > 0) appendChunk(mesh, geometry, indices, first);
        return;
    }

    Box bounds;
    for (std::uint32_t i = 0; i < element.count; ++i)
        bounds.include(glm::dvec3(geometry.vertices[geometry.indices[element.first + i]].position));
    int axes[3] = {0, 1, 2};
    glm::dvec3 size = bounds.size();
    std::sort(axes, axes + 3, [&](int a, int b) { return size[a] > size[b]; });
    int u = axes[0], v = axes[1];
    double cells = static_cast<double>(triangles) / trianglesPerChunk;
    double side = std::sqrt(std::max(size[u] * size[v], 1e-12) / cells);
    int across = std::clamp(static_cast<int>(std::lround(size[u] / side)), 1, 64);
    int along = std::clamp(static_cast<int>(std::lround(size[v] / side)), 1, 64);

    std::vector<std::uint32_t> order(triangles);
    std::vector<int> cell(triangles);
    std::iota(order.begin(), order.end(), 0U);
    for (std::uint32_t t = 0; t < triangles; ++t) {
        glm::dvec3 middle(0);
        for (std::uint32_t k = 0; k < 3; ++k)
            middle += glm::dvec3(geometry.vertices[corner(t, k)].position) / 3.0;
        auto place = [&](int axis, int count) {
            double share = size[axis] > 0 ? (middle[axis] - bounds.min[axis]) / size[axis] : 0;
            return std::clamp(static_cast<int>(share * count), 0, count - 1);
        };
        cell[t] = place(v, along) * across + place(u, across);
    }
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return cell[a] < cell[b]; });
    for (std::size_t i = 0; i < order.size();) {
        auto first = static_cast<std::uint32_t>(indices.size());
        int here = cell[order[i]];
        for (; i < order.size() && cell[order[i]] == here; ++i)
            for (std::uint32_t k = 0; k < 3; ++k) indices.push_back(corner(order[i], k));
        appendChunk(mesh, geometry, indices, first);
    }
}

IndexedVertices upload(StateKeeper& keeper, const Geometry& geometry,
                       const std::vector<std::uint32_t>& indices) {
    using Vertex = Geometry::Vertex;
    return {keeper,
            std::as_bytes(std::span(geometry.vertices)),
            sizeof(Vertex),
            {{0, 3, offsetof(Vertex, position)},
             {1, 3, offsetof(Vertex, normal)},
             {2, 2, offsetof(Vertex, uv0)},
             {3, 2, offsetof(Vertex, uv1)},
             {4, 4, offsetof(Vertex, colour)},
             {5, 1, offsetof(Vertex, roughness)}},
            indices};
}

}  // namespace

void cutIntoChunks(const Geometry& geometry, Mesh& mesh, std::vector<std::uint32_t>& indices) {
    indices.clear();
    indices.reserve(geometry.indices.size());
    for (const Geometry::Element& element : geometry.elements) {
        std::size_t first = mesh.chunks.size();
        cutElement(geometry, element, mesh, indices);
        mesh.elements.push_back({first, mesh.chunks.size() - first});
    }
}

const Mesh& MeshCache::mesh(const GeometryRef& geometry) {
    Entry& entry = entries_[geometry.get()];
    if (entry.owner.lock() == geometry) return entry.mesh;
    // New, or another geometry at the address of a deleted one.
    entry.owner = geometry;
    entry.mesh = Mesh();
    std::vector<std::uint32_t> indices;
    cutIntoChunks(*geometry, entry.mesh, indices);
    entry.mesh.vertices = upload(keeper_, *geometry, indices);
    return entry.mesh;
}

void MeshCache::collectGarbage() {
    std::erase_if(entries_, [](const auto& entry) { return entry.second.owner.expired(); });
}

}  // namespace gull
