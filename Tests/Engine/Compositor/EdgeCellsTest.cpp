#include "Engine/Compositor/EdgeCells.h"

#include <gtest/gtest.h>

#include <functional>
#include <glm/gtc/matrix_transform.hpp>

namespace gull::test {

namespace {

constexpr int cell = EdgeCells::cellSize;

Viewpoint lens() {
    Viewpoint view;
    view.size = {4 * cell, 3 * cell};
    view.projection = glm::perspective(0.7, 4.0 / 3, 0.1, 100.0);
    return view;
}

/// Depths of a picture whose surface is `away` world units in front of the eye at every pixel.
EdgeCells cellsOf(const std::function<double(int x, int y)>& away) {
    Viewpoint view = lens();
    std::vector<float> depths;
    for (int y = 0; y < view.size.height; ++y)
        for (int x = 0; x < view.size.width; ++x) {
            glm::dvec4 clip = view.projection * glm::dvec4(0, 0, -away(x, y), 1);
            depths.push_back(static_cast<float>(clip.z / clip.w * 0.5 + 0.5));
        }
    EdgeCells cells;
    cells.find(depths, view, PixelArea::whole(view.size));
    return cells;
}

/// A plane seen at an angle: nearness grows evenly across the picture.
double plane(int, int y) {
    return 1 / (0.05 + 0.0005 * y);
}

}  // namespace

TEST(EdgeCells, APlaneHasNone) {
    Viewpoint view = lens();
    EXPECT_TRUE(cellsOf(plane).within(PixelArea::whole(view.size)).empty());
}

TEST(EdgeCells, AThinPoleMarksItsColumnOnly) {
    EdgeCells cells = cellsOf([](int x, int y) { return plane(x, y) - (x == cell + cell / 2 ? 0.3 : 0); });
    std::vector<PixelArea> found = cells.within(PixelArea::whole(lens().size));
    ASSERT_EQ(found.size(), 3U);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(found[static_cast<std::size_t>(i)], (PixelArea{cell, i * cell, cell, cell}));
}

TEST(EdgeCells, AStepAcrossIsOneRunCutToTheAreaAskedFor) {
    EdgeCells cells = cellsOf([](int x, int y) { return plane(x, y) + (y < cell + cell / 2 ? 0 : 0.2); });
    std::vector<PixelArea> found = cells.within({10, cell + 5, 2 * cell, cell});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0], (PixelArea{10, cell + 5, 2 * cell, cell - 5}));
}

TEST(EdgeCells, WhereAWallMeetsTheGroundIsAnEdge) {
    EdgeCells cells = cellsOf([](int x, int y) { return plane(x, std::min(y, cell + cell / 2)); });
    EXPECT_FALSE(cells.within({0, cell, 4 * cell, cell}).empty());
    EXPECT_TRUE(cells.within({0, 0, 4 * cell, cell}).empty());
}

}  // namespace gull::test
