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

/// The result of a read. Exactly one of the two is set: the bytes, or the reason why there are none.
struct Contents {
    std::optional<std::string> bytes;
    std::string failure;     ///< for people, e.g. "Permission denied"
    bool isMissing = false;  ///< no such file, which is often no failure at all
};

/// The result of a write.
struct Outcome {
    std::string failure;  ///< empty on success; else for people, naming the step that failed
    explicit operator bool() const { return failure.empty(); }
};

/// Reads the whole file. Refuses anything but a regular file (a folder, a pipe, a device), and files above
/// `largest`.
Contents read(const std::filesystem::path& file);

/// Replaces `file` with `bytes` in one step: they are written and synced first, then renamed. If the program
/// is killed in between, the old file or the new one is there, whole, and at most `.<name>.new` beside it,
/// which the next replacement removes. Creates missing parent folders. Follows links, even to a file that
/// does not exist yet, keeps the permissions of an existing file, and never replaces anything but a regular
/// file.
Outcome replace(const std::filesystem::path& file, std::string_view bytes);

/// Keeps `bytes`, the contents of a damaged `file`, beside it as `<file>.damaged`, or `.damaged2` and so on
/// if that is taken.
Outcome setAside(const std::filesystem::path& file, std::string_view bytes);

/// Creates the missing folders above `file` for the user alone (0700), as is usual for the player's own
/// files. A failure shows when the file is written.
void makePrivateFolders(const std::filesystem::path& file);

/// The target of `file` after following links; it need not exist.
std::filesystem::path linkTarget(const std::filesystem::path& file);

}  // namespace SmallFile

}  // namespace gull
