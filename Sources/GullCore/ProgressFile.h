#pragma once

#include "GullCore/Progress.h"

#include <filesystem>
#include <optional>
#include <string>

namespace gull {

/// Keeps a game's progress in a file so that no result is lost: neither what this run earned nor what stands
/// in the file.
///
/// A save first reads what is on disk and keeps the better of the two, beach by beach, so that two games at
/// once keep both their results. A damaged file is set aside whole before the first save. A file that cannot
/// be read, or not set aside, is never written: the progress is owed then, and kept in memory. What is owed
/// is tried again by retry(), with the next save, and at the end. Each trouble is told once, and so is its
/// end.
///
/// One thread; other programs may use the file meanwhile.
class ProgressFile {
  public:
    explicit ProgressFile(std::filesystem::path file);
    /// Tries once more to save what is owed.
    ~ProgressFile();
    ProgressFile(const ProgressFile&) = delete;
    ProgressFile& operator=(const ProgressFile&) = delete;

    /// What the file holds; fresh when it is missing, damaged or cannot be read.
    CampaignProgress load();
    /// Saves `progress` with what is on disk merged into it, and returns both together. Of a file that
    /// cannot be read or written nothing is merged.
    CampaignProgress save(const CampaignProgress& progress);
    /// Erases the progress in the file: fresh progress is saved without merging.
    void erase();

    /// Whether something is not in the file yet that should be, or not read yet.
    bool isOwed() const { return owed_.has_value(); }
    /// Tries again to save what is owed; the progress with what is on disk merged into it once that went
    /// well.
    std::optional<CampaignProgress> retry();

  private:
    void tellOnce(const std::string& what);

    std::filesystem::path file_;
    std::optional<CampaignProgress> owed_;
    bool erases_ = false;   // what is owed replaces what is on disk
    bool hasTold_ = false;  // of the trouble that lasts
};

}  // namespace gull
