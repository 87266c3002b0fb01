#include "Gullwick/App/PresentPace.h"

#include <algorithm>

namespace gull {

double PresentPace::timeFor(double now) {
    const double shift = std::min(step, excess_);
    const double turn = last_ + interval_ - shift;
    const double wait = turn - now;
    if (wait <= 0 || wait > interval_) {  // late, or the first after a rest
        seen_ = 0;
        shortest_ = 1;
        excess_ = 0;
        return last_ = now;
    }
    excess_ -= shift;
    shortest_ = std::min(shortest_, wait);
    if (++seen_ == watched) {
        excess_ = std::max(shortest_ - spare, 0.0);
        seen_ = 0;
        shortest_ = 1;
    }
    return last_ = turn;
}

}  // namespace gull
