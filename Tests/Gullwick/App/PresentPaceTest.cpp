#include "Gullwick/App/PresentPace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace gull {
namespace {

constexpr double interval = 1.0 / 60;

/// Pictures begun every sixtieth of a second that take `work(i)` seconds to draw; when each is shown.
template <class Work>
std::vector<double> shown(int count, const Work& work) {
    PresentPace pace(interval);
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        const double ready = std::max(i * interval, times.empty() ? 0 : times.back()) + work(i);
        times.push_back(pace.timeFor(ready));
        EXPECT_GE(times.back(), ready) << "not before it is finished";
    }
    return times;
}

TEST(PresentPace, ShowsPicturesEvenlyAlthoughTheirWorkDiffers) {
    const std::vector<double> times = shown(600, [](int i) { return i % 3 == 0 ? 0.011 : 0.005; });
    for (std::size_t i = 10; i < times.size(); ++i)
        EXPECT_NEAR(times[i] - times[i - 1], interval, 0.0002) << i;
}

TEST(PresentPace, SlowPicturesAreShownAtOnceAndTheDelayTheyCauseMeltsAway) {
    const auto work = [](int i) { return i == 100 ? 0.030 : 0.004; };
    const std::vector<double> times = shown(900, work);
    EXPECT_NEAR(times[100], 100 * interval + 0.030, 1e-9) << "at once";
    EXPECT_LT(times[850] - 850 * interval, 0.004 + 0.003) << "shown soon after it is drawn";
    for (std::size_t i = 110; i < times.size(); ++i)
        EXPECT_NEAR(times[i] - times[i - 1], interval, 0.0002) << i;
}

TEST(PresentPace, ARestEndsWithoutAWait) {
    PresentPace pace(interval);
    pace.timeFor(1);
    EXPECT_EQ(pace.timeFor(5), 5);
    EXPECT_NEAR(pace.timeFor(5.005), 5 + interval, 1e-9);
}

}  // namespace
}  // namespace gull
