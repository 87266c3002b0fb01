#include "Gullwick/Game/Countdown.h"

#include <cmath>

namespace gull {

bool Countdown::advance(double remaining) {
    if (remaining < 0 || remaining > span) return false;
    const int second = static_cast<int>(std::ceil(remaining));
    if (second < 1 || second == last_) return false;
    last_ = second;
    return true;
}

}  // namespace gull
