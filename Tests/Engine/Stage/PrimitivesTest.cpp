#include "Engine/Stage/Primitives.h"

#include "Engine/Stage/MeshBuilder.h"
#include "Engine/Stage/MeshChecks.h"

#include <algorithm>
#include <numbers>
#include <string>
#include <vector>

namespace gull {
namespace {

constexpr double pi = std::numbers::pi;

struct Solid {
    std::string name;
    Geometry mesh;
    glm::dvec3 size;
    double volume;     ///< of the true shape
    double tolerance;  ///< share of it that tessellation may lose
};

std::vector<Solid> solids() {
    using namespace primitives;
    return {
        {"box", box(1, 2, 3), {1, 2, 3}, 6, 1e-6},
        {"chamfered box", box(1, 2, 3, 0.1), {1, 2, 3}, 6, 0.04},
        {"thin box, wide chamfer", box(1, 0.02, 3, 0.3), {1, 0.02, 3}, 0.06, 0.05},
        {"sphere", sphere(2, 48), {4, 4, 4}, 32 * pi / 3, 0.01},
        {"coarse sphere", sphere(2, 10), {4, 4, 4}, 32 * pi / 3, 0.2},
        {"geodesic sphere", geodesicSphere(2, 7), {4, 4, 4}, 32 * pi / 3, 0.03},
        {"faceted geodesic sphere", geodesicSphere(2, 3, true), {4, 4, 4}, 32 * pi / 3, 0.1},
        {"cylinder", cylinder(0.5, 3), {1, 3, 1}, 0.75 * pi, 0.01},
        {"cone", cone(0, 1, 2), {2, 2, 2}, 2 * pi / 3, 0.01},
        {"upturned cone", cone(1, 0, 2), {2, 2, 2}, 2 * pi / 3, 0.01},
        {"frustum", cone(1, 2, 3), {4, 3, 4}, 7 * pi, 0.01},
        {"torus", torus(2, 0.5), {5, 1, 5}, pi * pi, 0.02},
        {"tube", tube(1, 2, 3), {4, 3, 4}, 9 * pi, 0.01},
        {"capsule", capsule(0.5, 3), {1, 3, 1}, pi * (0.5 + 1.0 / 6), 0.03},
        {"capsule without a shaft", capsule(0.5, 1), {1, 1, 1}, pi / 6, 0.06},
        {"pyramid", pyramid(1, 2, 3), {1, 2, 3}, 2, 1e-6},
    };
}

TEST(Primitives, areClosedOutwardFacingAndOfTheirSize) {
    for (const Solid& solid : solids()) {
        SCOPED_TRACE(solid.name);
        EXPECT_EQ(meshChecks::openEdges(solid.mesh), 0);
        EXPECT_GT(meshChecks::smallestArea(solid.mesh), 1e-8);
        meshChecks::expectSoundNormals(solid.mesh);
        meshChecks::expectElementsCoverEverything(solid.mesh);
        EXPECT_NEAR(meshChecks::volume(solid.mesh), solid.volume, solid.volume * solid.tolerance);
        const glm::dvec3 size = solid.mesh.bounds().size();
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(size[axis], solid.size[axis], solid.size[axis] * 0.1);
    }
}

TEST(Primitives, separateEndsAreElementsSoThatTheyCanHaveTheirOwnMaterial) {
    const Geometry cylinder = primitives::cylinder(1, 2, 8);
    ASSERT_EQ(cylinder.elements.size(), 3u);
    const auto highest = [&](const Geometry::Element& element) {
        double y = -10;
        for (std::uint32_t i = 0; i < element.count; ++i) {
            y = std::max<double>(y, cylinder.vertices[cylinder.indices[element.first + i]].position.y);
        }
        return y;
    };
    EXPECT_EQ(highest(cylinder.elements[1]), 1);
    EXPECT_EQ(highest(cylinder.elements[2]), -1);
    EXPECT_EQ(primitives::cone(0, 1, 1).elements.size(), 2u);
    EXPECT_EQ(primitives::cone(0.5, 1, 1).elements.size(), 3u);
}

/// Seen from outside, the picture's right runs along `right` and its up is not mirrored.
void expectUpright(const Geometry& mesh, const Geometry::Element& element, const glm::dvec3& right,
                   const glm::dvec3& facing) {
    int checked = 0;
    for (std::uint32_t i = element.first; i < element.first + element.count; i += 3) {
        const auto& a = mesh.vertices[mesh.indices[i]];
        const auto& b = mesh.vertices[mesh.indices[i + 1]];
        const auto& c = mesh.vertices[mesh.indices[i + 2]];
        if (glm::dot(glm::dvec3(a.normal), facing) < 0.99) continue;
        const glm::dvec3 e1(b.position - a.position), e2(c.position - a.position);
        const glm::dvec2 d1(b.uv0 - a.uv0), d2(c.uv0 - a.uv0);
        const double determinant = d1.x * d2.y - d2.x * d1.y;
        ASSERT_NE(determinant, 0);
        const glm::dvec3 along = (e1 * d2.y - e2 * d1.y) / determinant;
        const glm::dvec3 up = (e2 * d1.x - e1 * d2.x) / determinant;
        EXPECT_GT(glm::dot(along, right), 0);
        EXPECT_GT(glm::dot(glm::cross(along, up), facing), 0) << "mirrored";
        ++checked;
    }
    EXPECT_GT(checked, 0);
}

TEST(Primitives, picturesStandUprightAndUnmirrored) {
    const Geometry plane = primitives::plane(2, 1);
    expectUpright(plane, plane.elements[0], {1, 0, 0}, {0, 0, 1});
    const Geometry box = primitives::box(1, 1, 1);
    expectUpright(box, box.elements[0], {1, 0, 0}, {0, 0, 1});
    expectUpright(box, box.elements[0], {0, 0, -1}, {1, 0, 0});
    expectUpright(box, box.elements[0], {1, 0, 0}, {0, 1, 0});
    const Geometry cylinder = primitives::cylinder(1, 2, 48);
    expectUpright(cylinder, cylinder.elements[0], {1, 0, 0}, {0, 0, 1});
    expectUpright(cylinder, cylinder.elements[1], {1, 0, 0}, {0, 1, 0});
    const Geometry sphere = primitives::sphere(1, 48);
    expectUpright(sphere, sphere.elements[0], {1, 0, 0}, {0, 0, 1});
}

TEST(Primitives, refuseWhatCannotBeMadeAndSayWhatItWas) {
    EXPECT_DEATH(primitives::box(1, -2, 1), "box of 1, -2, 1");
    EXPECT_DEATH(primitives::sphere(1, 2), "2 segments");
    EXPECT_DEATH(primitives::torus(1, 1.5), "torus of 1, 1.5");
    EXPECT_DEATH(primitives::capsule(0.5, 0.9), "radius 0.5 and height 0.9");
    EXPECT_DEATH(primitives::cone(0, 0, 1), "radii 0 and 0");
}

TEST(MeshTools, displacedVerticesStayTogetherAndGetFlatOrSmoothNormals) {
    const Geometry lumpy = mesh::displaced(primitives::geodesicSphere(1, 4), [](const glm::dvec3& p) {
        return p * (1 + 0.1 * std::sin(7 * p.x + 3 * p.y));
    });
    for (const double crease : {0.0, 30.0, 180.0}) {
        const Geometry mesh = mesh::withNormals(lumpy, crease);
        EXPECT_EQ(meshChecks::openEdges(mesh), 0);
        meshChecks::expectSoundNormals(mesh);
        int shared = 0;
        for (const auto& vertex : mesh.vertices) {
            for (const auto& other : mesh.vertices) {
                shared += meshChecks::weld(vertex.position) == meshChecks::weld(other.position) &&
                          glm::distance(vertex.normal, other.normal) > 1e-4f;
            }
        }
        EXPECT_EQ(shared == 0, crease == 180.0);
    }
}

TEST(MeshTools, appendedMeshesKeepFacingOutwardWhenMirrored) {
    const Geometry cone = primitives::cone(0.2, 1, 2, 12);
    glm::dmat4 mirror(1);
    mirror[0][0] = -2;
    mirror[3][1] = 5;
    MeshBuilder builder;
    builder.append(cone);
    builder.append(cone, mirror);
    const Geometry mesh = builder.take();
    EXPECT_EQ(meshChecks::openEdges(mesh), 0);
    meshChecks::expectSoundNormals(mesh);
    EXPECT_NEAR(meshChecks::volume(mesh), 3 * meshChecks::volume(cone), 1e-4);
}

}  // namespace
}  // namespace gull
