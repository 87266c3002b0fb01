#include "Gullwick/HUD/ClockText.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace gull {

std::string clock(double seconds) {
    const double whole = std::ceil(seconds);
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (!(whole >= -limit && whole < limit)) {
        std::fprintf(stderr, "clock: %g seconds cannot be shown\n", seconds);
        std::abort();
    }
    const auto s = static_cast<std::int64_t>(whole);
    return fmt::format("{}:{:02}", s / 60, s % 60);
}

}  // namespace gull
