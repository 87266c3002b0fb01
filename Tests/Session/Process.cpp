#include "Session/Process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace gull::session {

ScratchFolder::ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "gullwick-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder can be made");
    path_ = pattern;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

Process::Process(const std::string& program, const std::vector<std::string>& arguments,
                 const Environment& changes, const std::filesystem::path& folder) {
    static std::atomic<int> count{0};
    const std::string name = std::to_string(++count);
    outputFile_ = folder / ("output-" + name);
    errorFile_ = folder / ("errors-" + name);
    pid_ = fork();
    if (pid_ < 0) throw std::runtime_error("fork failed");
    if (pid_ > 0) return;

    // The child. It leads a group of its own, so that what it starts ends with it.
    setpgid(0, 0);
    const auto redirect = [](const std::filesystem::path& file, int descriptor) {
        const int opened = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (opened >= 0) dup2(opened, descriptor);
    };
    const int null = open("/dev/null", O_RDONLY);
    if (null >= 0) dup2(null, STDIN_FILENO);
    redirect(outputFile_, STDOUT_FILENO);
    redirect(errorFile_, STDERR_FILENO);
    for (const auto& [key, value] : changes) {
        value ? setenv(key.c_str(), value->c_str(), 1) : unsetenv(key.c_str());
    }
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    execvp(program.c_str(), words.data());
    _exit(127);
}

Process::~Process() {
    if (!isRunning()) return;
    kill(-pid_, SIGKILL);
    wait(5);
}

bool Process::isRunning() {
    return !wait(0);
}

std::optional<int> Process::wait(double seconds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!status_) {
        int raw = 0;
        if (waitpid(pid_, &raw, WNOHANG) == pid_) {
            status_ = WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
            break;
        }
        if (std::chrono::steady_clock::now() >= deadline) break;
        pause(0.01);
    }
    return status_;
}

void Process::terminate() {
    kill(pid_, SIGTERM);
}
std::string Process::output() const {
    return contents(outputFile_);
}
std::string Process::errors() const {
    return contents(errorFile_);
}

Result run(const std::string& program, const std::vector<std::string>& arguments, const Environment& changes,
           double seconds) {
    const ScratchFolder folder;
    Process process(program, arguments, changes, folder.path());
    const int status = process.wait(seconds).value_or(-1);
    return {status, process.output(), process.errors()};
}

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

void pause(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

}  // namespace gull::session
