#pragma once

#include <fmt/format.h>

#include <filesystem>
#include <string_view>

namespace gull {

/// The program's messages: on standard error, and in a file about the last run.
///
/// Saying something never fails, never waits and never ends the program: text that nobody reads is dropped.
/// Any thread may speak once keep() has been called. Like standard error, the log belongs to the whole
/// process.
namespace Log {

void write(fmt::string_view sentence, fmt::format_args values, bool aloud) noexcept;

/// Says one sentence without a line end, in fmt's format: "gullwick: <sentence>" on standard error, and a
/// line in the log. Control characters (a file name may hold some) become blanks; at most 4000 bytes are
/// written.
template <typename... T>
void say(fmt::format_string<T...> format, const T&... values) noexcept {
    write(format, fmt::make_format_args(values...), true);
}

/// The same for the log alone: details that help to understand the last run but are not news for the player.
template <typename... T>
void note(fmt::format_string<T...> format, const T&... values) noexcept {
    write(format, fmt::make_format_args(values...), false);
}

/// From now on everything said is also kept in `file`, which replaces the last run's. Creates missing folders
/// (0700). The log is limited to 1 MiB. If the file cannot be written, there is silently no log.
void keep(const std::filesystem::path& file) noexcept;
/// The log's file; empty if there is none.
const std::filesystem::path& file() noexcept;

/// Opens /dev/null for each of the three standard streams that the program was started without. Otherwise the
/// next file opened, perhaps the player's progress, would become standard error. Call this before anything
/// else.
void completeStandardStreams() noexcept;

}  // namespace Log

}  // namespace gull
