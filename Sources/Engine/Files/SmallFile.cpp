#include "Engine/Files/SmallFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <utility>

namespace gull::SmallFile {
namespace {

/// Closes when it goes; only for descriptors whose close() has nothing left to report.
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
    /// Closes now and says whether that went well.
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

/// The permissions of a file made the ordinary way. Reading the mask means setting it: one thread only.
mode_t freshMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return static_cast<mode_t>(0666 & ~mask);
}

/// Makes the rename itself last. A file system that cannot sync a folder has done what it can.
void syncFolder(const std::filesystem::path& folder) {
    const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen()) ::fsync(descriptor.number());
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

    std::error_code error;
    std::filesystem::path target = file;
    if (std::filesystem::is_symlink(file, error)) {
        const auto linked = std::filesystem::canonical(file, error);
        if (!error) target = linked;
    }
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    // A failure shows again, with a reason, when the temporary file is made.
    std::filesystem::create_directories(folder, error);

    mode_t mode = freshMode();
    struct stat status {};
    if (::stat(target.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) return {"not a regular file"};
        mode = status.st_mode & 07777;
    }

    std::string temporary = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
    Descriptor descriptor(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor.isOpen()) return failed("cannot make a temporary file", errno);

    Outcome outcome;
    if (!writeAll(descriptor.number(), bytes)) {
        outcome = failed("cannot write", errno);
    } else if (::fchmod(descriptor.number(), mode) != 0) {
        outcome = failed("cannot set permissions", errno);
    } else if (::fsync(descriptor.number()) != 0) {
        outcome = failed("cannot sync", errno);
    } else if (!descriptor.close()) {
        outcome = failed("cannot close", errno);
    } else if (::rename(temporary.c_str(), target.c_str()) != 0) {
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
    std::filesystem::path aside = file;
    aside += ".damaged";
    return replace(aside, bytes);
}

}  // namespace gull::SmallFile
