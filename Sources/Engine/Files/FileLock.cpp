#include "Engine/Files/FileLock.h"

#include "Engine/Files/SmallFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <chrono>
#include <thread>

namespace gull {

FileLock::FileLock(const std::filesystem::path& file) {
    const std::filesystem::path folder = SmallFile::linkTarget(file).parent_path();
    folder_ = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder_ < 0) return;
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration<double>(patience);
    while (::flock(folder_, LOCK_EX | LOCK_NB) != 0) {
        if (Clock::now() > end) {
            ::close(folder_);
            folder_ = -1;
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

FileLock::~FileLock() {
    if (folder_ >= 0) ::close(folder_);
}

}  // namespace gull
