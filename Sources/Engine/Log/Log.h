#pragma once

#include <fmt/format.h>

#include <filesystem>
#include <string_view>

namespace gull {

/// What the program has to say: on standard error, and in a file that tells of the last run.
///
/// Saying something never fails, never waits and never ends the program: what nobody reads is dropped. Any
/// thread may speak once keep() has been called. Like standard error itself it belongs to the whole process.
namespace Log {

void write(fmt::string_view format, fmt::format_args values, bool aloud) noexcept;

/// One sentence without a line end, in fmt's format: "gullwick: <sentence>" on standard error, and a line of
/// the log. Control characters in it (a file name may hold some) become blanks; at most 4000 bytes are told.
template <typename... T>
void say(fmt::format_string<T...> format, const T&... values) noexcept {
    write(format, fmt::make_format_args(values...), true);
}

/// The same for the log alone: what helps to understand the last run, but is no news for the player.
template <typename... T>
void note(fmt::format_string<T...> format, const T&... values) noexcept {
    write(format, fmt::make_format_args(values...), false);
}

/// From now on everything said is kept in `file` too, a fresh file in the place of the last run's. Missing
/// folders are made (0700). The log takes 1 MiB and no more. Without a place to write there is no log, and
/// nothing is said about it.
void keep(const std::filesystem::path& file) noexcept;
/// Where the log is kept; empty when there is none.
const std::filesystem::path& file() noexcept;

/// Opens /dev/null for each of the three standard streams that the program was started without. Otherwise
/// the next file opened, perhaps the player's progress, would be standard error. Call first of all.
void completeStandardStreams() noexcept;

}  // namespace Log

}  // namespace gull
