#include "Engine/Compositor/DirtySquares.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>

namespace gull {

TEST(DirtySquares, coverWhatWasMarkedOnceAndNotMuchMore) {
    const PixelSize size{1240, 790};
    DirtySquares dirty;
    dirty.begin(size);
    ASSERT_EQ(dirty.take(), std::vector<PixelArea>{PixelArea::whole(size)}) << "all of a new picture, as one";
    EXPECT_TRUE(dirty.take().empty());

    std::mt19937 random(5);
    auto number = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 200; ++round) {
        std::vector<PixelArea> marked;
        for (int i = number(6); i >= 0; --i) {
            marked.push_back({number(1300) - 40, number(850) - 40, number(300), number(200)});
            dirty.mark(marked.back());
        }
        std::vector<std::uint8_t> times(static_cast<std::size_t>(size.width * size.height), 0);
        for (const PixelArea& area : dirty.take()) {
            ASSERT_EQ(area.intersection(PixelArea::whole(size)), area);
            for (int y = area.y; y < area.top(); ++y)
                for (int x = area.x; x < area.right(); ++x)
                    ++times[static_cast<std::size_t>(y * size.width + x)];
        }
        for (int y = 0; y < size.height; y += 7) {
            for (int x = 0; x < size.width; x += 7) {
                const PixelArea here{x, y, 1, 1};
                bool inside = false, near = false;
                for (const PixelArea& area : marked) {
                    inside |= !area.intersection(here).empty();
                    near |= !area.grown(DirtySquares::squareSize).intersection(here).empty();
                }
                const int count = times[static_cast<std::size_t>(y * size.width + x)];
                ASSERT_LE(count, 1);
                ASSERT_TRUE(!inside || count == 1) << x << ' ' << y;
                ASSERT_TRUE(near || count == 0) << x << ' ' << y;
            }
        }
    }
}

}  // namespace gull
