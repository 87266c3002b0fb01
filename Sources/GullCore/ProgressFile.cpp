#include "GullCore/ProgressFile.h"

#include "Engine/Files/FileLock.h"
#include "Engine/Files/SmallFile.h"
#include "Engine/Log/Log.h"
#include "GullCore/Json.h"

#include <fmt/format.h>

#include <utility>

namespace gull {
namespace {

/// The contents of the progress file's path. Exactly one is set; neither is if there is no file, or an empty
/// one.
struct OnDisk {
    std::optional<CampaignProgress> progress;
    std::optional<std::string> damaged;  ///< its bytes
    std::optional<std::string> failure;  ///< why it cannot be read
};

OnDisk look(const std::filesystem::path& file) {
    auto contents = SmallFile::read(file);
    OnDisk result;
    if (contents.bytes) {
        result.progress = Json::readProgress(*contents.bytes);
        if (!result.progress && !contents.bytes->empty()) result.damaged = std::move(contents.bytes);
    } else if (!contents.isMissing) {
        result.failure = contents.failure;
    }
    return result;
}

/// Merges the file's contents into `progress` if asked to, and writes the result, unless that would lose
/// something. Empty on success.
std::string put(const std::filesystem::path& file, CampaignProgress& progress, bool merges) {
    SmallFile::makePrivateFolders(file);
    const FileLock lock(file);
    const OnDisk before = look(file);
    if (before.failure) return "cannot be read: " + *before.failure;
    if (before.damaged) {
        if (const auto kept = SmallFile::setAside(file, *before.damaged); !kept)
            return "is damaged and cannot be set aside: " + kept.failure;
    }
    if (merges && before.progress) {
        progress.merge(*before.progress);
        if (progress == *before.progress) return {};
    }
    const auto written = SmallFile::replace(file, Json::write(progress));
    return written ? std::string() : "is not saved: " + written.failure;
}

}  // namespace

CampaignProgress CampaignProgress::load(const std::filesystem::path& file) {
    return look(file).progress.value_or(CampaignProgress{});
}

void CampaignProgress::save(const std::filesystem::path& file) const {
    CampaignProgress progress = *this;
    put(file, progress, false);
}

ProgressFile::ProgressFile(std::filesystem::path file) : file_(std::move(file)) {}

ProgressFile::~ProgressFile() {
    retry();
}

CampaignProgress ProgressFile::load() {
    const OnDisk found = look(file_);
    if (found.damaged) {
        Log::say(
            "progress {}: is damaged, so the game starts afresh. The file is set aside as .damaged before "
            "the first save",
            file_.string());
    }
    if (found.failure) {
        tellOnce(
            fmt::format("cannot be read: {}; results are kept in memory until it can be", *found.failure));
        owed_ = CampaignProgress{};
    }
    return found.progress.value_or(CampaignProgress{});
}

CampaignProgress ProgressFile::save(const CampaignProgress& progress) {
    owed_ = progress;
    return retry().value_or(progress);
}

void ProgressFile::erase() {
    owed_ = CampaignProgress{};
    erases_ = true;
    retry();
}

std::optional<CampaignProgress> ProgressFile::retry() {
    if (!owed_) return std::nullopt;
    CampaignProgress progress = *owed_;
    if (const std::string failure = put(file_, progress, !erases_); !failure.empty()) {
        tellOnce(failure + "; tried again later");
        return std::nullopt;
    }
    owed_ = std::nullopt;
    erases_ = false;
    if (std::exchange(hasTold_, false)) Log::say("progress {}: is saved now", file_.string());
    return progress;
}

void ProgressFile::tellOnce(const std::string& what) {
    if (!std::exchange(hasTold_, true)) Log::say("progress {}: {}", file_.string(), what);
}

}  // namespace gull
