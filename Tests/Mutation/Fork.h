#pragma once

// Included once, by one of the changed sources that mutate.py writes. A test program run with
//
//   MUTANT_TRACE=FILE  appends the numbers of all places to FILE that it reaches, once each.
//   MUTANT_TRY=FILE    copies itself (fork) where it first reaches one of the places whose numbers are in
//   FILE. The
//                      copy makes the change and goes on to the end of the program, and what came of it is
//                      written to MUTANT_RESULTS: "noticed" or "passed" and the number. The program itself
//                      then goes on without any change. So the beginning of a test runs once for all changes.
//
// Copies work on the same temporary files; TMPDIR, a folder for this program alone, is put back after each. A
// program with threads cannot be copied; its places are "skipped".

#include "Mutant.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <bitset>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace mutation {
namespace {

constexpr std::size_t most = 20000;  // places

struct Notes {
    std::bitset<most> reached;
    std::bitset<most> wanted;  // to be tried
    int file = -1;
    pid_t original = ::getpid();  // a death test's process tries nothing
    bool tries = false;
    bool isControlled = false;  // a copy without a change has passed

    Notes() {
        const char* const trace = std::getenv("MUTANT_TRACE");
        const char* const list = std::getenv("MUTANT_TRY");
        const char* const results = std::getenv("MUTANT_RESULTS");
        tries = !trace && list && results;
        if (!trace && !tries) return;
        file = ::open(trace ? trace : results, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
        if (!tries) return;
        std::ifstream numbers(list);
        for (std::size_t number = 0; numbers >> number;) wanted.set(number);
    }
    void write(const std::string& line) const {
        if (::write(file, line.data(), line.size()) < 0) std::abort();
    }
};

Notes& notes() {
    static Notes all;
    return all;
}

bool hasThreads() {
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return std::distance(begin(tasks), end(tasks)) > 1;
}

/// Runs a copy of this process to its end; true in the copy, whose verdict is in `passes` of the original.
bool copied(bool& passes) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    const fs::path folder = fs::temp_directory_path(), kept = folder.string() + ".kept";
    rusage used{};
    ::getrusage(RUSAGE_SELF, &used);
    fs::rename(folder, kept);
    fs::copy(kept, folder, fs::copy_options::recursive | fs::copy_options::copy_symlinks, ignored);
    const pid_t copy = ::fork();
    if (copy == 0) {
        watching = false;
        const auto seconds = static_cast<rlim_t>(numberIn("MUTANT_SECONDS"));
        const rlimit limit{seconds, seconds + 2};  // for a change that never ends
        ::setrlimit(RLIMIT_CPU, &limit);
        ::alarm(static_cast<unsigned>(40 * seconds));
        return true;
    }
    int status = 0;
    ::waitpid(copy, &status, 0);
    passes = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    fs::remove_all(folder, ignored);
    fs::rename(kept, folder);
    return false;
}

}  // namespace

bool reached(int number) {
    Notes& all = notes();
    const auto place = static_cast<std::size_t>(number);
    if (all.reached[place] || ::getpid() != all.original) return false;
    all.reached.set(place);
    const std::string digits = std::to_string(number) + "\n";
    if (!all.tries) {
        all.write(digits);
        return false;
    }
    if (!all.wanted[place]) return false;
    bool passes = true;
    if (hasThreads()) {
        all.write("skipped " + digits);
        return false;
    }
    if (!all.isControlled) {
        if (copied(passes)) return false;
        if (!passes) {
            all.write("uncopyable 0\n");
            all.wanted.reset();
            return false;
        }
        all.isControlled = true;
    }
    if (copied(passes)) {
        active = number;
        return true;
    }
    all.write((passes ? "passed " : "noticed ") + digits);
    return false;
}

}  // namespace mutation
