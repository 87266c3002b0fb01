#include "Engine/Render/Viewpoint.h"

#include <gtest/gtest.h>

#include <glm/gtc/matrix_transform.hpp>

namespace gull::test {

TEST(Viewpoint, OnlyWhatTheLensCanSeeHasAnArea) {
    Viewpoint view;
    view.size = {400, 300};
    view.projection = glm::perspective(0.8, 4.0 / 3, 0.5, 100.0);
    view = view.standingAt(glm::dmat4(1));  // looks along -z
    auto area = [&view](const glm::dvec3& middle, double half) {
        return view.area({middle - half, middle + half});
    };

    const PixelArea ahead = area({0, 0, -10}, 1);
    EXPECT_EQ(ahead.x + ahead.width / 2, 200);
    EXPECT_EQ(ahead.y + ahead.height / 2, 150);
    EXPECT_LT(ahead.width, 100);

    EXPECT_TRUE(area({0, 0, 10}, 2).empty()) << "behind";
    EXPECT_TRUE(area({-40, 0, 3}, 5).empty()) << "beside, and across the plane of the eye";
    EXPECT_TRUE(area({0, 0, -200}, 2).empty()) << "too far";
    EXPECT_EQ(area({0, 0, 0}, 2), PixelArea::whole(view.size)) << "around the eye";
}

}  // namespace gull::test
