#include "Engine/Log/Log.h"

#include "TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <csignal>

namespace gull {
namespace {

namespace fs = std::filesystem;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// Makes a descriptor standard error for as long as it lives.
class StandardError {
  public:
    explicit StandardError(int descriptor) : before_(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 10)) {
        ::dup2(descriptor, STDERR_FILENO);
    }
    ~StandardError() {
        ::dup2(before_, STDERR_FILENO);
        ::close(before_);
    }
    StandardError(const StandardError&) = delete;
    StandardError& operator=(const StandardError&) = delete;

  private:
    int before_;
};

class LogTest : public testing::Test {
  protected:
    // A message that waited would wait for ever.
    void SetUp() override { ::alarm(20); }
    void TearDown() override { ::alarm(0); }

    static std::string readSome(int descriptor) {
        std::string text(1 << 16, 0);
        const ssize_t count = ::read(descriptor, text.data(), text.size());
        text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        return text;
    }
    /// Fills a descriptor until it takes no more bytes.
    static void fill(int descriptor) {
        const std::string bytes(1 << 16, 'x');
        const int flags = ::fcntl(descriptor, F_GETFL);
        ::fcntl(descriptor, F_SETFL, flags | O_NONBLOCK);
        for (std::size_t size = bytes.size(); size > 0; size /= 2)
            while (::write(descriptor, bytes.data(), size) > 0) {
            }
        ::fcntl(descriptor, F_SETFL, flags);
    }
};

TEST_F(LogTest, aSentenceIsOneCleanLine) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    {
        const StandardError redirected(ends[1]);
        Log::say("{} of {}", 3, "a\nb\x1b[31m");
        Log::say("{}", std::string(9000, 'y'));
        Log::note("unheard");
    }
    const std::string said = readSome(ends[0]);
    EXPECT_EQ(said.substr(0, said.find('\n')), "gullwick: 3 of a b [31m");
    EXPECT_THAT(said, EndsWith("yyy\n"));
    EXPECT_LT(said.size(), 4096U);
    EXPECT_THAT(said, Not(HasSubstr("unheard")));
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(LogTest, whatCannotBeWrittenAtOnceIsDropped) {
    int pipe[2], socket[2], terminal[2];
    ASSERT_EQ(::pipe(pipe), 0);
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, socket), 0);
    ASSERT_EQ(::openpty(&terminal[0], &terminal[1], nullptr, nullptr, nullptr), 0);
    for (const int descriptor : {pipe[1], socket[1], terminal[1]}) {
        fill(descriptor);
        const StandardError redirected(descriptor);
        Log::say("into what is full");
        EXPECT_EQ(::fcntl(descriptor, F_GETFL) & O_NONBLOCK, 0) << "it belongs to others too";
    }
    int stopped[2];
    ASSERT_EQ(::openpty(&stopped[0], &stopped[1], nullptr, nullptr, nullptr), 0);
    ASSERT_EQ(::tcflow(stopped[1], TCOOFF), 0);
    {
        const StandardError redirected(stopped[1]);
        Log::say("to a terminal that somebody stopped");
    }
    for (const int descriptor :
         {pipe[0], pipe[1], socket[0], socket[1], terminal[0], terminal[1], stopped[0], stopped[1]})
        ::close(descriptor);
}

TEST_F(LogTest, aReaderThatHasGoneIsNoReasonToDie) {
    int pipe[2], socket[2];
    ASSERT_EQ(::pipe(pipe), 0);
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, socket), 0);
    ::close(pipe[0]);
    ::close(socket[0]);
    ASSERT_NE(std::signal(SIGPIPE, SIG_DFL), SIG_ERR);
    for (const int descriptor : {pipe[1], socket[1]}) {
        const StandardError redirected(descriptor);
        errno = EAGAIN;
        Log::say("to nobody");
        EXPECT_EQ(errno, EAGAIN);
        ::close(descriptor);
    }
    const int full = ::open("/dev/full", O_WRONLY);
    {
        const StandardError redirected(full);
        Log::say("onto a full disk");
        ::close(STDERR_FILENO);
        Log::say("into nothing");
    }
    ::close(full);
    sigset_t pending;
    ASSERT_EQ(sigpending(&pending), 0);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0) << "it would strike later";
}

TEST_F(LogTest, noFileBecomesAStandardStreamThatWasClosed) {
    const StandardError restoredAfterwards(STDERR_FILENO);
    ::close(STDERR_FILENO);
    Log::completeStandardStreams();
    const int file = ::open("/dev/zero", O_RDONLY);
    EXPECT_GT(file, STDERR_FILENO);
    Log::say("into nothing");
    ::close(file);
}

TEST_F(LogTest, isKeptInAFreshFileOfItsOwn) {
    const TemporaryFolder folder;
    const fs::path file = folder / "state/Gullwick/last-run.log";
    Log::keep(file);
    EXPECT_EQ(Log::file(), file);
    EXPECT_EQ(fs::status(folder / "state").permissions(), fs::perms(0700));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
    std::ifstream lastRun(file);
    testing::internal::CaptureStderr();
    Log::say("heard {}", 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "gullwick: heard 1\n");
    Log::note("unheard\n{}", 2);
    EXPECT_THAT(readText(file), ContainsRegex("^ +0\\.[0-9]+  heard 1\n +0\\.[0-9]+  unheard 2\n$"));

    Log::keep(file);
    Log::note("of the second run");
    EXPECT_THAT(readText(file), Not(HasSubstr("heard")));
    EXPECT_THAT((std::string{std::istreambuf_iterator<char>(lastRun), {}}), Not(HasSubstr("second")));
    for (int i = 0; i < 400; ++i) Log::note("{}", std::string(5000, 'z'));
    EXPECT_LE(fs::file_size(file), 1U << 20);
    EXPECT_GT(fs::file_size(file), 1000000U);

    fs::create_directories(folder / "taken");
    Log::keep(folder / "taken");
    Log::keep("/proc/none/last-run.log");
    Log::keep("");
    EXPECT_EQ(Log::file(), file) << "where there is no place for one, the log stays where it was";
}

}  // namespace
}  // namespace gull
