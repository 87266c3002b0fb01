#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace gull {

/// Files small enough to be read and written whole: settings, progress. A replacement either happens
/// completely or not at all, so that a crash or a full disk never leaves half a file where a good one stood.
namespace SmallFile {

/// The largest file that read() takes, in bytes.
inline constexpr std::size_t largest = 16u << 20;

/// What a read found. Exactly one of the two is set: the bytes, or why there are none.
struct Contents {
    std::optional<std::string> bytes;
    std::string failure;     ///< for people, e.g. "Permission denied"
    bool isMissing = false;  ///< no such file, which is often no failure at all
};

/// What became of a write.
struct Outcome {
    std::string failure;  ///< empty when all went well; else for people, naming the step that failed
    explicit operator bool() const { return failure.empty(); }
};

/// The whole file. Anything but a regular file (a folder, a pipe, a device) is refused, and so is one above
/// `largest`.
Contents read(const std::filesystem::path& file);

/// Puts `bytes` in the place of `file`: a temporary file in the same folder is written, synced and renamed.
/// Missing parent folders are made. A link is followed, and an existing file keeps its permissions; something
/// that is not a regular file is never replaced.
Outcome replace(const std::filesystem::path& file, std::string_view bytes);

/// Keeps `bytes`, what a damaged `file` holds, beside it as `<file>.damaged`, in the place of an older one.
Outcome setAside(const std::filesystem::path& file, std::string_view bytes);

}  // namespace SmallFile

}  // namespace gull
