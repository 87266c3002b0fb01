#pragma once

#include <filesystem>

namespace gull {

/// Keeps other runs of this program off a file while one reads it, changes it and puts it back. It is the
/// file's folder that is locked, so that no lock file is left behind.
///
/// Whoever holds the lock for longer than `patience` is ignored: a game that hangs must not stop another.
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
