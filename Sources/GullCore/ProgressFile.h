#pragma once

#include "GullCore/Progress.h"

#include <filesystem>
#include <optional>
#include <string>

namespace gull {

/// Keeps a game's progress in a file and loses no result: neither this run's nor those already in the file.
///
/// A save first reads the file and keeps the better results, beach by beach, so that two simultaneous games
/// both keep theirs. A damaged file is set aside whole before the first save. A file that cannot be read or
/// set aside is never written: the progress then stays owed, in memory. Owed progress is saved again by
/// retry(), with the next save, and at the end. Each problem is reported once, and so is its end.
///
/// Single-threaded; other programs may use the file meanwhile.
class ProgressFile {
  public:
    explicit ProgressFile(std::filesystem::path file);
    /// Tries once more to save owed progress.
    ~ProgressFile();
    ProgressFile(const ProgressFile&) = delete;
    ProgressFile& operator=(const ProgressFile&) = delete;

    /// The file's progress; fresh if it is missing, damaged or cannot be read.
    CampaignProgress load();
    /// Saves `progress` merged with the file's contents and returns the merged progress. If the file cannot
    /// be read or written, nothing is merged.
    CampaignProgress save(const CampaignProgress& progress);
    /// Erases the progress in the file by saving fresh progress without merging.
    void erase();

    /// Whether something still has to be written to the file, or the file has not been read yet.
    bool isOwed() const { return owed_.has_value(); }
    /// Tries again to save owed progress; on success returns the progress merged with the file's contents.
    std::optional<CampaignProgress> retry();

  private:
    void tellOnce(const std::string& what);

    std::filesystem::path file_;
    std::optional<CampaignProgress> owed_;
    bool erases_ = false;   // owed progress replaces the file's contents
    bool hasTold_ = false;  // of the current problem
};

}  // namespace gull
