#include "Engine/Files/SmallFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <system_error>
#include <utility>

namespace gull::SmallFile {
namespace {

/// Closes on destruction; only for descriptors whose close() has nothing left to report.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }
    /// Closes now and says whether that succeeded.
    bool close() { return ::close(std::exchange(number_, -1)) == 0; }

  private:
    int number_;
};

std::string reason(int error) {
    return std::generic_category().message(error);
}

Outcome failed(const char* step, int error) {
    return {std::string(step) + ": " + reason(error)};
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Makes the rename itself durable. If the file system cannot sync a folder, this is all that can be done.
void syncFolder(const std::filesystem::path& folder) {
    const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen()) ::fsync(descriptor.number());
}

/// A file without a name, which disappears if the program is killed. Closed if the file system has none.
int openUnnamed([[maybe_unused]] const std::filesystem::path& folder) {
#ifdef O_TMPFILE
    return ::open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666);
#else
    errno = EOPNOTSUPP;
    return -1;
#endif
}

int openNamed(const std::filesystem::path& file) {
    ::unlink(file.c_str());  // left behind by a program that was killed
    return ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

/// Gives an unnamed file a name.
bool link(const Descriptor& descriptor, const std::filesystem::path& file) {
    ::unlink(file.c_str());
    const std::string unnamed = "/proc/self/fd/" + std::to_string(descriptor.number());
    return ::linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, file.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

/// Writes `bytes` to `file`, complete and synced, replacing anything there. `mode` holds the permissions;
/// empty: those of any new file.
Outcome writeNew(const std::filesystem::path& file, std::string_view bytes, std::optional<mode_t> mode,
                 bool unnamed) {
    Descriptor descriptor(unnamed ? openUnnamed(file.parent_path()) : openNamed(file));
    if (!descriptor.isOpen()) return failed("cannot make a temporary file", errno);
    if (!writeAll(descriptor.number(), bytes)) return failed("cannot write", errno);
    if (mode && ::fchmod(descriptor.number(), *mode) != 0) return failed("cannot set permissions", errno);
    if (::fsync(descriptor.number()) != 0) return failed("cannot sync", errno);
    if (unnamed && !link(descriptor, file)) return failed("cannot name the temporary file", errno);
    if (!descriptor.close()) return failed("cannot close", errno);
    return {};
}

}  // namespace

Contents read(const std::filesystem::path& file) {
    // Without O_NONBLOCK, opening a pipe would wait for a writer.
    const Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor.isOpen()) return {{}, reason(errno), errno == ENOENT};

    struct stat status {};
    if (::fstat(descriptor.number(), &status) != 0) return {{}, reason(errno), false};
    if (!S_ISREG(status.st_mode)) return {{}, "not a regular file", false};

    std::string bytes;
    char block[16384];
    for (;;) {
        const ssize_t count = ::read(descriptor.number(), block, sizeof block);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return {{}, reason(errno), false};
        if (count == 0) return {std::move(bytes), {}, false};
        bytes.append(block, static_cast<std::size_t>(count));
        if (bytes.size() > largest) return {{}, "too large", false};
    }
}

Outcome replace(const std::filesystem::path& file, std::string_view bytes) {
    if (!file.has_filename()) return failed("no file name", EINVAL);

    const std::filesystem::path target = linkTarget(file);
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    std::error_code error;
    if (std::filesystem::is_symlink(target, error)) return failed("cannot follow the link", ELOOP);
    // A failure shows again, with a reason, when the temporary file is made.
    std::filesystem::create_directories(folder, error);

    std::optional<mode_t> mode;
    struct stat status {};
    if (::stat(target.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) return {"not a regular file"};
        mode = status.st_mode & 07777;
    }

    const std::filesystem::path temporary = folder / ("." + target.filename().string() + ".new");
    Outcome outcome = writeNew(temporary, bytes, mode, true);
    if (!outcome) outcome = writeNew(temporary, bytes, mode, false);
    if (outcome && ::rename(temporary.c_str(), target.c_str()) != 0) {
        outcome = failed("cannot rename", errno);
    }
    if (outcome) {
        syncFolder(folder);
    } else {
        ::unlink(temporary.c_str());
    }
    return outcome;
}

Outcome setAside(const std::filesystem::path& file, std::string_view bytes) {
    constexpr int most = 99;
    std::filesystem::path aside = file;
    aside += ".damaged";
    std::error_code ignored;
    for (int number = 2; std::filesystem::exists(std::filesystem::symlink_status(aside, ignored)); ++number) {
        if (number > most) return {"too many damaged files stand there already"};
        aside = file;
        aside += ".damaged" + std::to_string(number);
    }
    return replace(aside, bytes);
}

void makePrivateFolders(const std::filesystem::path& file) {
    std::filesystem::path folder;
    for (const auto& step : linkTarget(file).parent_path()) {
        folder /= step;
        ::mkdir(folder.c_str(), 0700);
    }
}

std::filesystem::path linkTarget(const std::filesystem::path& file) {
    constexpr int most = 40;  // links in a row, as for the system
    std::filesystem::path target = file;
    std::error_code error;
    for (int i = 0; i < most && std::filesystem::is_symlink(target, error); ++i) {
        const auto next = std::filesystem::read_symlink(target, error);
        if (error) break;
        target = target.parent_path() / next;
    }
    return target;
}

}  // namespace gull::SmallFile
