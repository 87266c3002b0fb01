#pragma once

namespace gull {

/// Prints what a caller got wrong (printf's format and values, no line end) and stops the program; release
/// builds included.
[[noreturn]] [[gnu::format(printf, 1, 2)]] void brokenPrecondition(const char* format, ...);

}  // namespace gull
