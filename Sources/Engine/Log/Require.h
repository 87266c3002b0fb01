#pragma once

#include <fmt/format.h>

namespace gull {

/// Says `message`, in fmt's format, as `Log::say` does and aborts the program.
[[noreturn]] void stopProgram(fmt::string_view message, fmt::format_args values);

/// Stops the program because a caller broke a precondition. The message says what was wrong and shows the
/// values.
template <class... Values>
[[noreturn]] void brokenPrecondition(fmt::format_string<Values...> message, const Values&... values) {
    stopProgram(message, fmt::make_format_args(values...));
}

/// Checks a precondition, in release builds too: unless `condition` holds, stops the program as
/// `brokenPrecondition` does. The values are evaluated in either case, so keep them cheap.
template <class... Values>
void require(bool condition, fmt::format_string<Values...> message, const Values&... values) {
    if (!condition) [[unlikely]]
        stopProgram(message, fmt::make_format_args(values...));
}

}  // namespace gull
