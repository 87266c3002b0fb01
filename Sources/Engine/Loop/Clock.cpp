#include "Engine/Loop/Clock.h"

#include <algorithm>
#include <chrono>

namespace gull {

double UptimeClock::now() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void ManualClock::moveTo(double time) {
    time_ = std::max(time_, time);
}

}  // namespace gull
