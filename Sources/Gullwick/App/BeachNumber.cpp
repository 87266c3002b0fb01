#include "Gullwick/App/BeachNumber.h"

#include <fmt/format.h>

#include <limits>

namespace gull {

std::optional<std::string> beachProblem(std::int64_t number) {
    if (number < 0) return fmt::format("a beach has a number from 1 to 8, not {}", number);
    // The seed of the scene's dressing must fit 64 bits; play itself counts in int.
    if (number > std::numeric_limits<int>::max()) return fmt::format("there is no beach {}", number);
    return std::nullopt;
}

}  // namespace gull
