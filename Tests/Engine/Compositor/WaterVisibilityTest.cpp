#include "Engine/Compositor/WaterVisibility.h"

#include <gtest/gtest.h>

#include <glm/gtc/matrix_transform.hpp>

#include <cmath>

namespace gull::test {

namespace {

/// A camera 10 above a lake that extends from 50 in front of it to far away, looking along -z and `down`
/// degrees down.
class WaterSight : public testing::Test {
  protected:
    WaterSight() {
        view.size = {400, 300};
        view.projection = glm::perspective(glm::radians(40.0), 4.0 / 3, 0.5, 2000.0);
        look(20);
        mesh.bounds = {{-5000, -0.1, -5000}, {5000, 0.1, -5}};
        water.mesh = &mesh;
    }
    void look(double down) {
        view = view.standingAt(glm::translate(glm::dmat4(1), glm::dvec3(0, 10, 0)) *
                               glm::rotate(glm::dmat4(1), glm::radians(-down), glm::dvec3(1, 0, 0)));
    }
    PixelArea whole() const { return PixelArea::whole(view.size); }

    Viewpoint view;
    Mesh mesh;
    DrawItem water;
};

TEST_F(WaterSight, coversWhatAllRaysMeet) {
    look(40);
    EXPECT_TRUE(covers(water, view, whole(), -1));
    EXPECT_FALSE(covers(water, view, whole(), 0)) << "something stands out of it";
    mesh.bounds.max.z = -10;  // the lowest ray meets the ground 5.8 before the camera
    EXPECT_FALSE(covers(water, view, whole(), -1)) << "the shore is in the picture";
    EXPECT_TRUE(covers(water, view, {0, 150, 400, 150}, -1)) << "but not in its upper half";
    look(15);
    EXPECT_FALSE(covers(water, view, {0, 150, 400, 150}, -1)) << "the sky is in the picture";
}

TEST_F(WaterSight, coversIsTrueOfMovedWaterToo) {
    look(40);
    water.model = glm::translate(glm::dmat4(1), glm::dvec3(0, 0, -60));
    EXPECT_FALSE(covers(water, view, whole(), -1));
}

TEST_F(WaterSight, glittersTowardTheSunAndNowhereElse) {
    const auto sun = [](double height, double azimuth) {
        const double h = glm::radians(height), a = glm::radians(azimuth);
        return glm::dvec3(std::cos(h) * std::sin(a), std::sin(h), -std::cos(h) * std::cos(a));
    };
    EXPECT_TRUE(glitters(view, whole(), sun(20, 0))) << "the mirrored axis itself";
    EXPECT_TRUE(glitters(view, whole(), sun(48, 0))) << "waves mirror what is a little beside";
    EXPECT_FALSE(glitters(view, whole(), sun(60, 0))) << "too high";
    EXPECT_FALSE(glitters(view, whole(), sun(20, 180))) << "in the back";
    EXPECT_FALSE(glitters(view, whole(), sun(20, 60))) << "beside";
    EXPECT_FALSE(glitters(view, {0, 0, 400, 20}, sun(10, 0))) << "mirrored higher up in the picture";
}

}  // namespace

}  // namespace gull::test
