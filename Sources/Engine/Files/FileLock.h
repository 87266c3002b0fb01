#pragma once

#include <filesystem>

namespace gull {

/// Keeps other instances of this program away from a file while one reads, changes and replaces it. It locks
/// the file's folder, so that no lock file is left behind.
///
/// A lock held for longer than `patience` is ignored: a game that hangs must not stop another.
class FileLock {
  public:
    static constexpr double patience = 0.25;  ///< seconds

    /// Locks if it can; `file` itself need not exist. Links are followed.
    explicit FileLock(const std::filesystem::path& file);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    bool isHeld() const { return folder_ >= 0; }

  private:
    int folder_ = -1;
};

}  // namespace gull
