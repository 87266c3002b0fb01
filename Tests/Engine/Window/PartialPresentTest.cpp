#include "Engine/Window/PartialPresent.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace gull {
namespace {

TEST(PartialPresent, JoinsWhatIsCheaperTogether) {
    using Part = Window::Part;
    EXPECT_TRUE(fewer({}).empty());
    // Two squares side by side, and one far away.
    const std::vector<Part> parts{{0, 0, 64, 64}, {1000, 700, 64, 64}, {64, 0, 64, 64}};
    const std::vector<Part> few = fewer(parts);
    ASSERT_EQ(few.size(), 2U);
    EXPECT_NE(std::find(few.begin(), few.end(), Part{0, 0, 128, 64}), few.end());
    EXPECT_NE(std::find(few.begin(), few.end(), parts[1]), few.end());
    // A strip over the whole width stays apart from a large square far below it.
    EXPECT_EQ(fewer({{0, 0, 1240, 128}, {300, 400, 320, 320}}).size(), 2U);
    // Steps of a staircase: nothing gets lost, whatever is joined.
    std::vector<Part> steps;
    for (int i = 0; i < 12; ++i) steps.push_back({i * 64, i * 64, 64, 64});
    const std::vector<Part> joined = fewer(steps);
    EXPECT_LT(joined.size(), 6U);
    for (const Part& step : steps) {
        EXPECT_TRUE(std::any_of(joined.begin(), joined.end(), [&](const Part& part) {
            return part.x <= step.x && part.y <= step.y && part.x + part.width >= step.x + 64 &&
                   part.y + part.height >= step.y + 64;
        }));
    }
}

}  // namespace
}  // namespace gull
