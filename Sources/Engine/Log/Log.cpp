#include "Engine/Log/Log.h"

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstddef>
#include <exception>

namespace gull::Log {
namespace {

constexpr std::size_t longestMessage = 4000;
constexpr std::size_t largestLog = 1u << 20;

using Clock = std::chrono::steady_clock;

struct KeptLog {
    std::filesystem::path file;
    std::atomic<int> descriptor = -1;
    std::atomic<std::size_t> size = 0;
    Clock::time_point start;
};

/// Never destroyed: something may be said while the program ends.
KeptLog& kept() {
    static auto* const log = new KeptLog;
    return *log;
}

/// Keeps this thread alive when the reader of a pipe is gone.
class PipeSignalHeld {
  public:
    PipeSignalHeld() {
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
    }
    PipeSignalHeld(const PipeSignalHeld&) = delete;
    PipeSignalHeld& operator=(const PipeSignalHeld&) = delete;
    ~PipeSignalHeld() {
        sigset_t pending;
        int number = 0;
        if (!wasPending_ && sigpending(&pending) == 0 && sigismember(&pending, SIGPIPE) == 1)
            sigwait(&pipe_, &number);
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }

  private:
    sigset_t pipe_{}, before_{};
    bool wasPending_ = false;
};

/// A pipe or terminal opened a second time as non-blocking: setting the flag on the first description would
/// affect everybody who shares it. -1 if that is impossible or unnecessary.
int openedWithoutWaiting(int descriptor) {
#ifdef __linux__
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && (S_ISFIFO(status.st_mode) || ::isatty(descriptor))) {
        std::array<char, 32> path{};
        fmt::format_to_n(path.data(), path.size() - 1, "/proc/self/fd/{}", descriptor);
        return ::open(path.data(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    }
#endif
    return -1;
}

/// Drops anything that a descriptor does not take immediately.
void writeWithoutWaiting(int descriptor, std::string_view bytes) {
    const int second = openedWithoutWaiting(descriptor);
    const int target = second >= 0 ? second : descriptor;
    while (!bytes.empty()) {
        pollfd wanted{target, POLLOUT, 0};
        if (::poll(&wanted, 1, 0) != 1 || !(wanted.revents & POLLOUT)) break;
        // A pipe that is writable takes this much without waiting.
        const ssize_t count =
            ::write(target, bytes.data(), std::min(bytes.size(), static_cast<std::size_t>(PIPE_BUF)));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    if (second >= 0) ::close(second);
}

void writeToLog(fmt::memory_buffer& line) {
    KeptLog& log = kept();
    const int descriptor = log.descriptor;
    if (descriptor < 0 || (log.size += line.size()) > largestLog) return;
    [[maybe_unused]] const ssize_t count = ::write(descriptor, line.data(), line.size());
}

void clean(fmt::memory_buffer& text, std::size_t from) {
    text.resize(std::min(text.size(), from + longestMessage));
    for (char* c = text.begin() + from; c != text.end(); ++c) {
        const auto code = static_cast<unsigned char>(*c);
        if (code < 0x20 || code == 0x7f) *c = ' ';
    }
}

/// A prefix, the sentence and a line end.
void format(fmt::memory_buffer& line, std::string_view prefix, fmt::string_view sentence,
            fmt::format_args values) {
    line.append(prefix);
    fmt::vformat_to(fmt::appender(line), sentence, values);
    clean(line, prefix.size());
    line.push_back('\n');
}

}  // namespace

void write(fmt::string_view sentence, fmt::format_args values, bool aloud) noexcept {
    const int error = errno;
    try {
        const PipeSignalHeld held;
        if (aloud) {
            fmt::memory_buffer line;
            format(line, "gullwick: ", sentence, values);
            writeWithoutWaiting(STDERR_FILENO, {line.data(), line.size()});
        }
        if (kept().descriptor >= 0) {
            std::array<char, 32> time{};
            const std::chrono::duration<double> elapsed = Clock::now() - kept().start;
            const auto end = fmt::format_to_n(time.data(), time.size(), "{:9.3f}  ", elapsed.count());
            fmt::memory_buffer line;
            format(line, {time.data(), std::min(end.size, time.size())}, sentence, values);
            writeToLog(line);
        }
    } catch (const std::exception&) {
        // There is no memory left for the message.
    }
    errno = error;
}

void keep(const std::filesystem::path& file) noexcept {
    if (file.empty()) return;
    try {
        std::filesystem::path folder;
        for (const auto& step : file.parent_path()) {
            folder /= step;
            ::mkdir(folder.c_str(), 0700);
        }
        // A game that is still running keeps writing to its own file.
        ::unlink(file.c_str());
        const int descriptor =
            ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC | O_NONBLOCK, 0600);
        if (descriptor < 0) return;
        KeptLog& log = kept();
        log.file = file;
        log.start = Clock::now();
        log.size = 0;
        if (const int last = log.descriptor.exchange(descriptor); last >= 0) ::close(last);
    } catch (const std::exception&) {
        // Then there is no log.
    }
}

const std::filesystem::path& file() noexcept {
    return kept().file;
}

void completeStandardStreams() noexcept {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // Descriptors are given out lowest first, so that this one is the one opened.
        if (::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF) ::open("/dev/null", O_RDWR);
    }
}

}  // namespace gull::Log
