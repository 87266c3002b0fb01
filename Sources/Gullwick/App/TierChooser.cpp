#include "Gullwick/App/TierChooser.h"

#include <algorithm>

namespace gull {

namespace {

constexpr std::size_t mostFrames = 4096;  // a minute and more: the rest of a long beach tells nothing new

}  // namespace

void TierChooser::record(double interval) {
    if (tier_ == RenderTier::full && intervals_.size() < mostFrames) intervals_.push_back(interval);
}

void TierChooser::beginBeach() {
    if (intervals_.size() >= enoughFrames) {
        const auto middle = intervals_.begin() + static_cast<std::ptrdiff_t>(intervals_.size() / 2);
        std::nth_element(intervals_.begin(), middle, intervals_.end());
        if (*middle > slowInterval) tier_ = RenderTier::fast;
    }
    intervals_.clear();
}

}  // namespace gull
