#include "Gullwick/App/TouchpadPermission.h"

#include "Engine/Files/SmallFile.h"
#include "Engine/Log/Log.h"

#include <fmt/format.h>

#include <cstdlib>
#include <system_error>
#include <utility>

namespace gull::TouchpadPermission {

std::string command() {
    std::error_code problem;
    std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", problem);
    // Where it is installed, its name is enough.
    if (problem || program.parent_path() == "/usr/bin" || program.parent_path() == "/usr/games")
        program = "gullwick";
    return fmt::format("sudo {} --allow-touchpad", program.string());
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
