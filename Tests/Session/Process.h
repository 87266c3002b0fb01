#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace gull::session {

/// A private folder under the system's temporary one; removed with its contents.
class ScratchFolder {
  public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

using Environment = std::map<std::string, std::optional<std::string>>;  ///< none: unset

/// A program that runs beside the test; killed with this object.
class Process {
  public:
    /// `program` is looked up in PATH. The environment is the test's own with `changes`. Its output goes into
    /// files in `folder`.
    Process(const std::string& program, const std::vector<std::string>& arguments, const Environment& changes,
            const std::filesystem::path& folder);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    bool isRunning();
    /// The exit status; empty if it still runs after `seconds`. A signal counts as 128 plus its number.
    std::optional<int> wait(double seconds);
    void terminate();
    std::string output() const;
    std::string errors() const;

  private:
    pid_t pid_ = -1;
    std::optional<int> status_;
    std::filesystem::path outputFile_;
    std::filesystem::path errorFile_;
};

struct Result {
    int status = -1;
    std::string output;
    std::string errors;
};

/// Runs a program to its end; a status of -1 says that it took longer than `seconds`.
Result run(const std::string& program, const std::vector<std::string>& arguments,
           const Environment& changes = {}, double seconds = 60);

std::string contents(const std::filesystem::path& file);
void pause(double seconds);

}  // namespace gull::session
