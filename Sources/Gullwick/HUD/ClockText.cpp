#include "Gullwick/HUD/ClockText.h"

#include "Engine/Log/Require.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>

namespace gull {

std::string clock(double seconds) {
    const double whole = std::ceil(seconds);
    constexpr double limit = 9223372036854775808.0;  // 2^63
    require(whole >= -limit && whole < limit, "clock: {} seconds cannot be shown", seconds);
    const auto s = static_cast<std::int64_t>(whole);
    return fmt::format("{}:{:02}", s / 60, s % 60);
}

}  // namespace gull
