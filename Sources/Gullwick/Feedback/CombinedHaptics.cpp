#include "Gullwick/Feedback/CombinedHaptics.h"

#include <algorithm>
#include <utility>

namespace gull {

CombinedHaptics::CombinedHaptics(std::vector<HapticPerformer*> performers)
    : performers_(std::move(performers)) {}

void CombinedHaptics::perform(HapticPattern pattern) {
    if (HapticPerformer* performer = first()) performer->perform(pattern);
}

bool CombinedHaptics::isAvailable() const {
    return first() != nullptr;
}

HapticPerformer* CombinedHaptics::first() const {
    const auto found = std::find_if(performers_.begin(), performers_.end(),
                                    [](const HapticPerformer* each) { return each->isAvailable(); });
    return found == performers_.end() ? nullptr : *found;
}

}  // namespace gull
