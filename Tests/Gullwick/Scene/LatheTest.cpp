#include "Gullwick/Scene/Lathe.h"

#include "Engine/Stage/MeshChecks.h"
#include "Gullwick/Scene/PropParts.h"

#include <algorithm>
#include <numbers>

namespace gull {
namespace {

constexpr double pi = std::numbers::pi;

TEST(Lathe, turnsAProfileIntoAClosedBody) {
    const Geometry pot = shapes::lathe({{0, 0, true}, {1, 0, true}, {1, 2, true}, {0, 2}}, 64, false, 3);
    EXPECT_EQ(meshChecks::openEdges(pot), 0);
    EXPECT_NEAR(meshChecks::volume(pot), 2 * pi, 0.02);
    // Three bands of 65 columns; every profile point is a seam.
    EXPECT_EQ(pot.vertices.size(), 3u * 65 * 2);
    EXPECT_EQ(pot.triangleCount(), 3u * 64 * 2);
    float greatestU = 0;
    for (const auto& vertex : pot.vertices) greatestU = std::max(greatestU, vertex.uv0.x);
    EXPECT_FLOAT_EQ(greatestU, 3);
}

TEST(Lathe, creasesOnlyWhereItIsTold) {
    const auto normalsAtHeight = [](const Geometry& mesh, float y) {
        std::vector<glm::vec3> normals;
        for (const auto& vertex : mesh.vertices) {
            if (vertex.position.y == y && vertex.position.z == 0 && vertex.position.x > 0) {
                normals.push_back(vertex.normal);
            }
        }
        return normals;
    };
    // A waist: the outline turns at (0.5, 1).
    for (const bool hard : {false, true}) {
        const Geometry waist = shapes::lathe({{1, 0}, {0.5, 1, hard}, {1, 2}}, 8, false, 1);
        const auto normals = normalsAtHeight(waist, 1);
        ASSERT_GE(normals.size(), 2u);
        if (hard) {
            EXPECT_GT(glm::distance(normals.front(), normals.back()), 0.5f);
        } else {
            for (const glm::vec3& n : normals) EXPECT_LT(glm::distance(n, glm::vec3(1, 0, 0)), 1e-6f);
        }
    }
    // Facets are flat: one normal for all four corners, whatever the outline says.
    const Geometry facets = shapes::lathe({{1, 0}, {0.5, 1}, {1, 2}}, 6, true, 1);
    EXPECT_EQ(facets.triangleCount(), 24u);
    for (std::size_t i = 0; i < facets.indices.size(); i += 6) {
        for (std::size_t k = 1; k < 6; ++k) {
            EXPECT_LT(glm::distance(facets.vertices[facets.indices[i]].normal,
                                    facets.vertices[facets.indices[i + k]].normal),
                      1e-6f);
        }
    }
}

TEST(Lathe, makesNothingOfLessThanTwoPoints) {
    EXPECT_TRUE(shapes::lathe({{1, 1}}, 12, false, 1).indices.empty());
    EXPECT_TRUE(shapes::lathe({}, 12, true, 1).indices.empty());
    EXPECT_DEATH(shapes::lathe({{1, 0}, {1, 1}}, 2, false, 1), "lathe of 2 segments");
}

TEST(Gem, isACutStone) {
    const Geometry gem = shapes::gem(0.3, 8);
    EXPECT_EQ(meshChecks::openEdges(gem), 0);
    EXPECT_GT(meshChecks::volume(gem), 0);
    const Box bounds = gem.bounds();
    EXPECT_NEAR(bounds.min.y, -0.285, 1e-6);
    EXPECT_NEAR(bounds.max.y, 0.126, 1e-6);
    EXPECT_NEAR(bounds.max.x, 0.3, 1e-6);
}

TEST(Shapes, barsTimbersAndBouldersAreSolid) {
    const Geometry bent =
        shapes::bar({{0, 0, 0}, {1, 0.2, 0}, {1.8, 1, 0.3}, {1.9, 2, 0}}, {0.2, 0.15, 0.1}, 9);
    EXPECT_EQ(meshChecks::openEdges(bent), 0);
    EXPECT_GT(meshChecks::volume(bent), 0);
    meshChecks::expectSoundNormals(bent);

    const Geometry straight = shapes::bar({{0, 0, 0}, {0, 3, 0}}, {0.5}, 64);
    EXPECT_NEAR(meshChecks::volume(straight), 0.75 * pi, 0.01);

    const Geometry beam = props::timber({1, 1, 1}, {1, 1, 4}, 0.4, 0.2);
    EXPECT_EQ(meshChecks::openEdges(beam), 0);
    const glm::dvec3 size = beam.bounds().size();
    EXPECT_NEAR(size.x, 0.4, 1e-6) << "the wide side lies level";
    EXPECT_NEAR(size.y, 0.2, 1e-6);
    EXPECT_NEAR(size.z, 3, 1e-6);

    const Geometry stone = props::boulder(9, 0.8, 0.2);
    EXPECT_EQ(meshChecks::openEdges(stone), 0);
    meshChecks::expectSoundNormals(stone);
    EXPECT_GT(meshChecks::volume(stone), 2);
}

}  // namespace
}  // namespace gull
