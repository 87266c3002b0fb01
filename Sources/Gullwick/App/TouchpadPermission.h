#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace gull {

/// What lets a player's programs read the touchpad: rules for the device manager, the same as the package
/// installs.
namespace TouchpadPermission {

/// The command that allows it for good, for a shell.
std::string command();
/// Has the device manager act on its rules at once.
inline constexpr const char* heedRules =
    "udevadm control --reload && udevadm trigger --action=change --subsystem-match=input "
    "--property-match=ID_INPUT_TOUCHPAD=1 && udevadm settle --timeout=10";

/// What that command runs: writes the rules into `folder` and has them acted on by the shell command `heed`.
/// The program's exit status; what went wrong is said.
int allow(const std::filesystem::path& folder = "/etc/udev/rules.d", const char* heed = heedRules);

/// The contents of the rule files, made by the build from those in Packaging.
extern const std::string_view grantingRule;
extern const std::string_view restrictingRule;

}  // namespace TouchpadPermission

}  // namespace gull
