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

/// Puts `bytes` in the place of `file` in one step: they are written and synced first, then renamed. A
/// program killed in between leaves the old file or the new one, whole, and at most `.<name>.new` beside it,
/// which the next replacement takes away. Missing parent folders are made. Links are followed, also to a
/// file that does not exist yet, and an existing file keeps its permissions; something that is not a regular
/// file is never replaced.
Outcome replace(const std::filesystem::path& file, std::string_view bytes);

/// Keeps `bytes`, what a damaged `file` holds, beside it as `<file>.damaged`, or `.damaged2` and so on when
/// that is taken already.
Outcome setAside(const std::filesystem::path& file, std::string_view bytes);

/// Makes the missing folders above `file` for nobody but the user (0700), as is customary for the folders
/// that the player's own files lie in. A failure shows when the file is written.
void makePrivateFolders(const std::filesystem::path& file);

/// What `file` stands for when links are followed; it need not exist.
std::filesystem::path linkTarget(const std::filesystem::path& file);

}  // namespace SmallFile

}  // namespace gull
