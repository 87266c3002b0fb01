#include "Engine/Window/RumblePulses.h"

#include <algorithm>

namespace gull {

RumblePulses::Pulse RumblePulses::pulse(HapticPattern pattern) {
    switch (pattern) {
        case HapticPattern::alignment:
            return {0, 0.4, 0.022};
        case HapticPattern::generic:
            return {0.5, 0.25, 0.028};
        case HapticPattern::levelChange:
            return {0.9, 0.7, 0.038};
    }
    return {};
}

bool RumblePulses::request(HapticPattern pattern, double now) {
    const Pulse wanted = pulse(pattern);
    if (last_) {
        const Pulse last = pulse(*last_);
        const bool isStronger = std::max(wanted.low, wanted.high) > std::max(last.low, last.high);
        if (now - start_ < last.length + rest && !isStronger) return false;
    }
    last_ = pattern;
    start_ = now;
    return true;
}

}  // namespace gull
