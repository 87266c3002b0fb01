#pragma once

#include "Engine/Loop/Published.h"
#include "Gullwick/Settings/Setting.h"
#include "Gullwick/Settings/SettingsFile.h"

#include <filesystem>
#include <functional>
#include <string>
#include <utility>

namespace gull {

/// The player's settings, kept in a small JSON file so that they survive a restart. A further one is a
/// further line below.
class AppSettings {
    // They come first, for the settings read and write them.
    SettingsFile file_;
    mutable ChangeNotifier changes_;

  public:
    /// Looks a variable up: its value, or null when it is not set. std::getenv is one.
    using Environment = std::function<const char*(const char*)>;

    /// Reads `file`; a missing one means that everything stands at its default. An empty path: nothing is
    /// kept.
    explicit AppSettings(std::filesystem::path file) : file_(std::move(file)) {}

    Setting<bool> haptics{file_, changes_, "haptics", true};              ///< pulses in the pad
    Setting<bool> sound{file_, changes_, "sound", true};                  ///< all of it
    Setting<bool> trackpadSweep{file_, changes_, "trackpadSweep", true};  ///< the pad steers the coil
    Setting<bool> showTicks{file_, changes_, "showTicks", false};         ///< ticks are drawn as well
    Setting<bool> reduceMotion{file_, changes_, "reduceMotion", false};   ///< no shakes or fly-ins
    /// Code of the language that the game speaks, "de"; empty: the one that the system asks for.
    Setting<std::string> language{file_, changes_, "language", ""};
    /// A window that loses the keyboard or is minimised pauses the beach.
    Setting<bool> pauseInBackground{file_, changes_, "pauseInBackground", true};
    Setting<int> effectsVolume{file_, changes_, "effectsVolume",
                               100,   0,        100};                     ///< ticks and all else, percent
    Setting<int> surfVolume{file_, changes_, "surfVolume", 100, 0, 100};  ///< percent
    /// Where the window stood last, in the window's own words; empty: nowhere yet.
    Setting<std::string> window{file_, changes_, "window", ""};
    Setting<bool> fullScreen{file_, changes_, "fullScreen", false};  ///< the game opens so

    /// Told just before any of them changes.
    ChangeNotifier& changes() const { return changes_; }

    /// Where the settings are kept: Gullwick/settings.json in the user's configuration folder. Empty when the
    /// user has no home, and then nothing is kept.
    static std::filesystem::path defaultFile(const Environment& environment);
    /// Where the campaign progress is kept: the path in GULLWICK_SAVE as it stands, else
    /// Gullwick/progress.json in the user's folder for application data. Nothing is made or checked here.
    static std::filesystem::path progressURL(const Environment& environment);
    /// Where a game keeps what it said: Gullwick/last-run.log in the user's folder for state. Empty when the
    /// user has no home.
    static std::filesystem::path logFile(const Environment& environment);
};

}  // namespace gull
