#pragma once

#include "Engine/Loop/Published.h"
#include "Gullwick/Settings/Setting.h"
#include "Gullwick/Settings/SettingsFile.h"

#include <filesystem>
#include <functional>
#include <string>
#include <utility>

namespace gull {

/// The player's settings, kept in a small JSON file so that they survive a restart. To add a setting, add one
/// line below.
class AppSettings {
    // These come first because the settings use them.
    SettingsFile file_;
    mutable ChangeNotifier changes_;

  public:
    /// Looks up a variable: its value, or null if it is not set. std::getenv is one.
    using Environment = std::function<const char*(const char*)>;

    /// Reads `file`; if it is missing, every setting has its default. With an empty path nothing is stored.
    explicit AppSettings(std::filesystem::path file) : file_(std::move(file)) {}

    Setting<bool> haptics{file_, changes_, "haptics", true};              ///< pulses in the pad
    Setting<bool> sound{file_, changes_, "sound", true};                  ///< all of it
    Setting<bool> trackpadSweep{file_, changes_, "trackpadSweep", true};  ///< the pad steers the coil
    Setting<bool> showTicks{file_, changes_, "showTicks", false};         ///< ticks are drawn as well
    Setting<bool> reduceMotion{file_, changes_, "reduceMotion", false};   ///< no shakes or fly-ins
    /// Code of the language that the game speaks, "de"; empty: the system's language.
    Setting<std::string> language{file_, changes_, "language", ""};
    /// A window that loses the keyboard or is minimised pauses the beach.
    Setting<bool> pauseInBackground{file_, changes_, "pauseInBackground", true};
    Setting<int> effectsVolume{file_, changes_, "effectsVolume",
                               100,   0,        100};  ///< all sounds, ticks included, percent
    Setting<int> surfVolume{file_, changes_, "surfVolume", 100, 0, 100};  ///< percent
    /// The window's last place, in the window's own format; empty: none yet.
    Setting<std::string> window{file_, changes_, "window", ""};
    Setting<bool> fullScreen{file_, changes_, "fullScreen", false};  ///< the game opens in this mode

    /// Notified just before any of them changes.
    ChangeNotifier& changes() const { return changes_; }

    /// The settings file: Gullwick/settings.json in the user's configuration folder. Empty if the user has no
    /// home; then nothing is stored.
    static std::filesystem::path defaultFile(const Environment& environment);
    /// The file for campaign progress: the path in GULLWICK_SAVE as given, else Gullwick/progress.json in the
    /// user's folder for application data. Creates and checks nothing.
    static std::filesystem::path progressURL(const Environment& environment);
    /// The file for the game's messages: Gullwick/last-run.log in the user's folder for state. Empty if the
    /// user has no home.
    static std::filesystem::path logFile(const Environment& environment);
};

}  // namespace gull
