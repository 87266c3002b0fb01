#include "Engine/Compositor/ReliefGrid.h"

#include <gmock/gmock.h>

#include <glm/gtc/matrix_transform.hpp>

namespace gull::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A flat beach seen straight from above: 64 x 48 pixels show 16 x 12 units, x to the right, -z upward. The
/// left half is at height 0, the right half at height 1; the uppermost row of squares shows only background.
class ReliefGridTest : public testing::Test {
  protected:
    ReliefGridTest() {
        view.size = {64, 48};
        view.projection = glm::ortho(-8.0, 8.0, -6.0, 6.0, 0.0, 20.0);
        view = view.standingAt(glm::translate(glm::dmat4(1), glm::dvec3(0, 10, 0)) *
                               glm::rotate(glm::dmat4(1), glm::radians(-90.0), glm::dvec3(1, 0, 0)));
        depths.resize(64 * 48);
        for (std::size_t i = 0; i < depths.size(); ++i) depths[i] = i % 64 < 32 ? 0.5F : 0.45F;
        std::fill(depths.begin() + 64 * 32, depths.end(), 1.0F);
        grid.read(depths, view, {0, 1, 0}, PixelArea::whole(view.size));
    }

    Viewpoint view;
    std::vector<float> depths;
    ReliefGrid grid;
};

TEST_F(ReliefGridTest, tellsHeightsAndWhereNothingIs) {
    const PixelArea left{0, 0, 32, 32}, right{33, 0, 31, 32}, background{0, 32, 64, 16};
    EXPECT_NEAR(grid.highest(left), 0, 0.05);
    EXPECT_NEAR(grid.highest(right), 1, 0.05);
    EXPECT_NEAR(grid.highest(PixelArea::whole(view.size)), 1, 0.05);
    EXPECT_LT(grid.highest(background), -1e6) << "the background has no height";

    EXPECT_EQ(grid.below(-0.5), background);
    EXPECT_EQ(grid.below(0.5), PixelArea::whole(view.size)) << "holds the left half and the background";
}

TEST_F(ReliefGridTest, marksWhatALampReaches) {
    grid.markReach({-6, 0.5, 4}, 0.4);
    EXPECT_THAT(grid.marked(ReliefGrid::lampMark), IsEmpty()) << "above the ground, out of reach";
    grid.markReach({-6, 0.5, 4}, 0.6);
    EXPECT_THAT(grid.marked(ReliefGrid::lampMark), ElementsAre(PixelArea{0, 0, 16, 16}));
    grid.markAllLit();
    EXPECT_THAT(grid.marked(ReliefGrid::noMark), IsEmpty());
    grid.clear();
    EXPECT_THAT(grid.marked(ReliefGrid::lampMark), IsEmpty());
}

TEST_F(ReliefGridTest, marksWhatACasterShadesAndNothingNearerTheSun) {
    // Under a sun in the zenith, in axes: everything at this place of the ground.
    const glm::dvec3 middle = grid.sunAxes() * glm::dvec3(6, 0.5, 4);
    const Box caster{middle - 0.3, middle + 0.3};
    grid.markShadow(caster);
    EXPECT_THAT(grid.marked(ReliefGrid::shadowMark), IsEmpty()) << "the ground is above the caster there";
    const glm::dvec3 up = grid.sunAxes() * glm::dvec3(0, 2, 0);
    grid.markShadow({caster.min + up, caster.max + up});
    EXPECT_THAT(grid.marked(ReliefGrid::shadowMark), ElementsAre(PixelArea{48, 0, 16, 16}));
    grid.markReach({6, 1, 4}, 0.1);
    EXPECT_THAT(grid.marked(ReliefGrid::shadowMark | ReliefGrid::lampMark),
                ElementsAre(PixelArea{48, 0, 16, 16}));
    EXPECT_THAT(grid.marked(ReliefGrid::shadowMark), IsEmpty()) << "marks are exact";
}

TEST_F(ReliefGridTest, joinsNeighboursInARow) {
    grid.markReach({0, 0.5, 4}, 2);
    EXPECT_THAT(grid.marked(ReliefGrid::lampMark), ElementsAre(PixelArea{16, 0, 32, 16}));
}

TEST_F(ReliefGridTest, readsOnlyTheSquaresThatAnAreaTouches) {
    std::fill(depths.begin(), depths.end(), 0.4F);  // height 2
    grid.read(depths, view, {0, 1, 0}, {5, 5, 2, 2});
    EXPECT_NEAR(grid.highest({0, 0, 16, 16}), 2, 0.05);
    EXPECT_NEAR(grid.highest({16, 0, 16, 16}), 0, 0.05);
}

TEST(AxesAlong, areAFrameWithTheDirectionAsZ) {
    for (const glm::dvec3& way : {glm::dvec3(0, 1, 0), glm::dvec3(0.36, 0.48, 0.8), glm::dvec3(-1, 0, 0)}) {
        const glm::dmat3 axes = axesAlong(way);
        EXPECT_LT(glm::distance(axes * way, glm::dvec3(0, 0, 1)), 1e-9);
        EXPECT_NEAR(glm::determinant(axes), 1, 1e-9);
    }
}

}  // namespace

}  // namespace gull::test
