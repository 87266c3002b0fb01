#include "Engine/Render/MeshCache.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>

namespace gull::test {

namespace {

/// A sheet of `columns` x `rows` squares of side 1 on the ground, two triangles each.
Geometry sheet(std::uint32_t columns, std::uint32_t rows) {
    Geometry geometry;
    for (std::uint32_t z = 0; z <= rows; ++z)
        for (std::uint32_t x = 0; x <= columns; ++x) {
            Geometry::Vertex vertex;
            vertex.position = glm::vec3(x, 0, z);
            geometry.vertices.push_back(vertex);
        }
    for (std::uint32_t z = 0; z < rows; ++z)
        for (std::uint32_t x = 0; x < columns; ++x) {
            const std::uint32_t a = z * (columns + 1) + x, b = a + columns + 1;
            for (const std::uint32_t i : {a, b, a + 1, a + 1, b, b + 1}) geometry.indices.push_back(i);
        }
    geometry.elements = {{0, static_cast<std::uint32_t>(geometry.indices.size())}};
    return geometry;
}

using Triangle = std::array<std::uint32_t, 3>;

std::multiset<Triangle> triangles(const std::vector<std::uint32_t>& indices, std::size_t first,
                                  std::size_t count) {
    std::multiset<Triangle> all;
    for (std::size_t i = first; i < first + count; i += 3)
        all.insert({indices[i], indices[i + 1], indices[i + 2]});
    return all;
}

TEST(MeshChunks, holdEveryTriangleOnceInItsElement) {
    Geometry geometry = sheet(60, 40);
    const auto half = static_cast<std::uint32_t>(geometry.indices.size()) / 2;
    geometry.elements = {{0, half}, {half, 0}, {half, half}};
    Mesh mesh;
    std::vector<std::uint32_t> indices;
    cutIntoChunks(geometry, mesh, indices);

    ASSERT_EQ(mesh.elements.size(), 3U);
    EXPECT_EQ(mesh.elements[1].chunkCount, 0U) << "nothing to draw";
    std::uint32_t next = 0;
    for (std::size_t e = 0; e < 3; ++e) {
        const std::uint32_t first = next;
        for (std::size_t i = 0; i < mesh.elements[e].chunkCount; ++i) {
            const Mesh::Chunk& chunk = mesh.chunks[mesh.elements[e].firstChunk + i];
            EXPECT_EQ(chunk.first, next) << "chunks follow each other";
            next += chunk.count;
        }
        const Geometry::Element& element = geometry.elements[e];
        EXPECT_EQ(triangles(indices, first, next - first),
                  triangles(geometry.indices, element.first, element.count));
    }
    EXPECT_EQ(next, indices.size());
}

TEST(MeshChunks, areSmallNeighbourhoods) {
    const Geometry geometry = sheet(80, 20);  // 3200 triangles
    Mesh mesh;
    std::vector<std::uint32_t> indices;
    cutIntoChunks(geometry, mesh, indices);
    ASSERT_GT(mesh.chunks.size(), 15U);
    ASSERT_LT(mesh.chunks.size(), 60U);
    for (const Mesh::Chunk& chunk : mesh.chunks) {
        for (std::size_t i = chunk.first; i < chunk.first + chunk.count; ++i)
            ASSERT_TRUE(chunk.bounds.contains({glm::dvec3(geometry.vertices[indices[i]].position),
                                               glm::dvec3(geometry.vertices[indices[i]].position)}));
        EXPECT_LT(chunk.bounds.size().x, 16) << "of a sheet that is 80 long";
        EXPECT_LT(chunk.bounds.size().z, 16);
    }
    EXPECT_EQ(mesh.bounds.size(), glm::dvec3(80, 0, 20));
}

TEST(MeshChunks, smallOrDegenerateElementsStayWhole) {
    Mesh small;
    std::vector<std::uint32_t> indices;
    cutIntoChunks(sheet(10, 10), small, indices);
    EXPECT_EQ(small.chunks.size(), 1U);

    Geometry point = sheet(20, 20);
    for (Geometry::Vertex& vertex : point.vertices) vertex.position = {1, 2, 3};
    Mesh folded;
    cutIntoChunks(point, folded, indices);
    std::uint32_t count = 0;
    for (const Mesh::Chunk& chunk : folded.chunks) count += chunk.count;
    EXPECT_EQ(count, point.indices.size());
}

}  // namespace

}  // namespace gull::test
