#include "Gullwick/Scene/Terrain.h"

#include "Engine/Stage/MeshChecks.h"

#include <algorithm>

namespace gull {
namespace {

TEST(Terrain, hasItsHeights) {
    struct Case {
        double x, z, height;
    };
    // The plot's seaward edge, the sea floor, the plot, a side dune, the back dunes, corners.
    for (const Case& c :
         {Case{0, -5, -0.060398246161}, Case{0, -6, -0.204839654716}, Case{3.5, 2.25, 0.315517480552},
          Case{-12.5, 4, 0.543110013091}, Case{5, 11, 0.722349501476}, Case{16, -3, 0.394273916801},
          Case{-30, 25, 1.897736609253}, Case{2, -18, -2.750245164541}}) {
        EXPECT_NEAR(Terrain::height(c.x, c.z), c.height, 1e-11) << c.x << ", " << c.z;
    }
}

TEST(Terrain, knowsWhereTheWaterEnds) {
    EXPECT_NEAR(Terrain::shoreZ(-0.21), -6.031638351, 1e-8);
    EXPECT_NEAR(Terrain::shoreZ(0), -3.974219047, 1e-8);
    EXPECT_NEAR(Terrain::shoreZ(0.05), -3.121333033, 1e-8);
    EXPECT_NEAR(Terrain::shoreZ(0.84), 6, 1e-8) << "everything is under water";
    EXPECT_NEAR(Terrain::shoreZ(-9), -20, 1e-8) << "the sea is gone";
}

TEST(Terrain, mapsThePlotAndBack) {
    const glm::dvec3 seawardLeft = Terrain::world({0, 1});
    EXPECT_EQ(seawardLeft.x, -8);
    EXPECT_EQ(seawardLeft.z, -5);
    const glm::dvec3 place = Terrain::world({0.7, 0.25});
    EXPECT_NEAR(place.x, 3.2, 1e-12);
    EXPECT_NEAR(place.z, 2.5, 1e-12);
    EXPECT_EQ(place.y, Terrain::height(place.x, place.z));
    const PlotPoint back = Terrain::plotPoint(place.x, place.z);
    EXPECT_NEAR(back.x, 0.7, 1e-12);
    EXPECT_NEAR(back.y, 0.25, 1e-12);
}

TEST(Terrain, sandIsTheGridWithItsNormalsColoursAndCoordinates) {
    const Geometry sand = Terrain::sandGeometry(BeachLook::forBeach(1));
    ASSERT_EQ(sand.vertices.size(), 16677u);
    EXPECT_EQ(sand.triangleCount(), 32832u);
    meshChecks::expectSoundNormals(sand);
    meshChecks::expectElementsCoverEverything(sand);

    struct Case {
        std::size_t index;
        glm::dvec3 position, normal;
    };
    for (const Case& c : {Case{0, {-38, -4.090302643, -24}, {-0.046360148, 0.969247761, -0.241680606}},
                          Case{5584, {0, -0.204839655, -6}, {0.021000642, 0.986776391, -0.160721269}},
                          Case{9280, {12, 0.514416226, 6}, {-0.051764609, 0.997469565, -0.048732865}},
                          Case{16676, {38, 2.089625126, 30}, {-0.088681613, 0.990637709, -0.103790660}}}) {
        EXPECT_LT(glm::distance(glm::dvec3(sand.vertices[c.index].position), c.position), 2e-6);
        EXPECT_LT(glm::distance(glm::dvec3(sand.vertices[c.index].normal), c.normal), 2e-6);
    }
    // Deep in the sea, at the waterline, dry.
    EXPECT_LT(glm::distance(sand.vertices[0].colour, glm::vec4(0.347966, 0.263906, 0.163118, 1)), 3e-6f);
    EXPECT_LT(glm::distance(sand.vertices[5584].colour, glm::vec4(0.407041, 0.310297, 0.191488, 1)), 3e-6f);
    EXPECT_LT(glm::distance(sand.vertices[9280].colour, glm::vec4(0.849983, 0.665488, 0.407322, 1)), 3e-6f);

    // x = -8, z = -5 and x = 8, z = 5 are the corners of the plot's own coordinates.
    const auto at = [&](double x, double z) {
        return sand.vertices[static_cast<std::size_t>((z + 24) / 0.5) * 153 +
                             static_cast<std::size_t>((x + 38) / 0.5)];
    };
    EXPECT_EQ(at(-8, -5).uv1, glm::vec2(0, 0));
    EXPECT_EQ(at(8, 5).uv1, glm::vec2(1, 1));
    EXPECT_FLOAT_EQ(at(3, 0).uv0.x, 0.9375f);
}

TEST(Terrain, theCoarseSandLiesOnTheFineOne) {
    const BeachLook look = BeachLook::forBeach(1);
    const SandMesh mesh;
    const Geometry coarse = mesh.coarse(look), fine = mesh.coloured(look);
    EXPECT_EQ(coarse.triangleCount() * 16, fine.triangleCount());
    meshChecks::expectSoundNormals(coarse);
    meshChecks::expectElementsCoverEverything(coarse);
    EXPECT_EQ(coarse.vertices.front().position, fine.vertices.front().position);
    EXPECT_EQ(coarse.vertices.back().position, fine.vertices.back().position);
    double farthest = 0;
    for (std::size_t i = 0; i < coarse.indices.size(); i += 3) {
        glm::dvec3 middle(0);
        for (std::size_t k = 0; k < 3; ++k)
            middle += glm::dvec3(coarse.vertices[coarse.indices[i + k]].position) / 3.0;
        // On land: the ground under a rock or a rope.
        if (middle.z > -5)
            farthest = std::max(farthest, std::abs(middle.y - Terrain::height(middle.x, middle.z)));
    }
    EXPECT_LT(farthest, 0.08);

    // Quick pictures omit its first element: the sea covers it even at its lowest.
    ASSERT_EQ(coarse.elements.size(), 2U);
    EXPECT_GT(coarse.elements[0].count, 0U);
    for (std::size_t i = 0; i < coarse.elements[0].count; ++i)
        EXPECT_LT(coarse.vertices[coarse.indices[i]].position.y, -0.26);
}

TEST(Look, everyBeachBeyondTheSeventhSharesTheLastLight) {
    for (const int number : {8, 0, 9, 500, -3})
        EXPECT_EQ(BeachLook::forBeach(number), BeachLook::forBeach(8));
    for (int number = 1; number <= 7; ++number) {
        EXPECT_FALSE(BeachLook::forBeach(number) == BeachLook::forBeach(number + 1));
    }
    EXPECT_EQ(BeachLook::forBeach(6).exposure, 0.5);
    EXPECT_EQ(BeachLook::forBeach(7).shadowSoftness, 12);
    EXPECT_EQ(BeachLook::forBeach(8).water, (RGB{0, 0.34, 0.42}));
}

}  // namespace
}  // namespace gull
