#include "Gullwick/App/TouchpadPermission.h"

#include "Engine/Files/SmallFile.h"
#include "Engine/Log/Log.h"

#include <fmt/format.h>

#include <cstdlib>
#include <system_error>
#include <utility>

namespace gull::TouchpadPermission {

namespace {

/// A word for the shell, in quotes if it needs some.
std::string word(const std::string& text) {
    constexpr const char* plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._-+:,@%";
    if (text.find_first_not_of(plain) == std::string::npos) return text;
    std::string quoted = "'";
    for (const char each : text) quoted += each == '\'' ? std::string("'\\''") : std::string(1, each);
    return quoted + "'";
}

}  // namespace

std::string command() {
    std::error_code problem;
    std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", problem);
    if (problem) program = "gullwick";
    return commandFor(program, std::filesystem::exists("/usr/bin/sudo", problem));
}

std::string commandFor(const std::filesystem::path& program, bool hasSudo) {
    // sudo does not look for games.
    const std::string called = program.parent_path() == "/usr/bin" ? program.filename() : program;
    const std::string allowing = word(called) + " --allow-touchpad";
    return hasSudo ? "sudo " + allowing : "su -c " + word(allowing);
}

int allow(const std::filesystem::path& folder, const char* heed) {
    for (const auto& [name, rule] : {std::pair{"70-gullwick-touchpad.rules", grantingRule},
                                     std::pair{"74-gullwick-touchpad.rules", restrictingRule}}) {
        if (const auto written = SmallFile::replace(folder / name, std::string(rule)); !written) {
            Log::say("{} cannot be written ({}). This needs the machine's administrator: {}",
                     (folder / name).string(), written.failure, command());
            return 1;
        }
        std::error_code ignored;
        using std::filesystem::perms;
        std::filesystem::permissions(
            folder / name, perms::owner_read | perms::owner_write | perms::group_read | perms::others_read,
            ignored);
    }
    const bool isHeeded = std::system(heed) == 0;
    fmt::print("All programs of the person at this machine may now read the touchpad.{}\n",
               isHeeded ? "" : " udev does not answer: restart the machine for it to count.");
    return 0;
}

}  // namespace gull::TouchpadPermission
