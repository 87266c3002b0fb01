#include "Gullwick/Settings/AppSettings.h"

#include <pwd.h>
#include <unistd.h>

namespace gull {
namespace {

namespace fs = std::filesystem;

/// The user's home folder; empty if there is none.
fs::path home(const AppSettings::Environment& environment) {
    if (const char* set = environment("HOME"); set && *set) return set;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? fs::path(user->pw_dir) : fs::path();
}

/// The game's own folder in `variable` if that holds an absolute path (the XDG rule: ignore relative ones),
/// else in `standard` in the user's home. Empty if there is no home.
fs::path gameFolder(const AppSettings::Environment& environment, [[maybe_unused]] const char* variable,
                    const fs::path& standard) {
#ifndef __APPLE__
    if (const char* set = environment(variable); set && fs::path(set).is_absolute()) {
        return fs::path(set) / "Gullwick";
    }
#endif
    const fs::path base = home(environment);
    return base.empty() ? base : base / standard / "Gullwick";
}

#ifdef __APPLE__
constexpr const char* configurationFolder = "Library/Application Support";
constexpr const char* dataFolder = "Library/Application Support";
constexpr const char* stateFolder = "Library/Logs";
#else
constexpr const char* configurationFolder = ".config";
constexpr const char* dataFolder = ".local/share";
constexpr const char* stateFolder = ".local/state";
#endif

}  // namespace

fs::path AppSettings::defaultFile(const Environment& environment) {
    const fs::path folder = gameFolder(environment, "XDG_CONFIG_HOME", configurationFolder);
    return folder.empty() ? folder : folder / "settings.json";
}

fs::path AppSettings::progressURL(const Environment& environment) {
    if (const char* set = environment("GULLWICK_SAVE")) return set;
    const fs::path folder = gameFolder(environment, "XDG_DATA_HOME", dataFolder);
    return folder.empty() ? folder : folder / "progress.json";
}

fs::path AppSettings::logFile(const Environment& environment) {
    const fs::path folder = gameFolder(environment, "XDG_STATE_HOME", stateFolder);
    return folder.empty() ? folder : folder / "last-run.log";
}

}  // namespace gull
