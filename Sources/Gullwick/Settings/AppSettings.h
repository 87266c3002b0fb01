#pragma once

#include "Engine/Loop/Published.h"

#include <filesystem>
#include <functional>
#include <string>

namespace gull {

/// The player's switches, kept in a small JSON file so that they survive a restart. Observers are told just
/// before a switch changes; every assignment is written to the file at once, only the assigned key changes
/// there, and keys that this version does not know stay.
///
/// What is wrong with the file is said once on standard error and the rest of it still counts. Text that is
/// no JSON object at all is set aside as `<file>.damaged` before the first write; a file that cannot be read
/// is never written.
class AppSettings {
  public:
    /// Looks a variable up: its value, or null when it is not set. std::getenv is one.
    using Environment = std::function<const char*(const char*)>;

    /// Reads `file`; a missing one means that everything stands at its default. An empty path: nothing is
    /// kept.
    explicit AppSettings(std::filesystem::path file);

    bool haptics() const { return haptics_; }              ///< pulses in the pad; on by default
    bool sound() const { return sound_; }                  ///< on by default
    bool trackpadSweep() const { return trackpadSweep_; }  ///< the pad steers the coil; on by default
    bool showTicks() const { return showTicks_; }          ///< ticks are drawn as well; off by default
    bool reduceMotion() const { return reduceMotion_; }    ///< no shakes or fly-ins; off by default

    void setHaptics(bool on);
    void setSound(bool on);
    void setTrackpadSweep(bool on);
    void setShowTicks(bool on);
    void setReduceMotion(bool on);

    ChangeNotifier& changes() { return changes_; }

    /// Where the settings are kept: Gullwick/settings.json in the user's configuration folder. Empty when the
    /// user has no home, and then nothing is kept.
    static std::filesystem::path defaultFile(const Environment& environment);
    /// Where the campaign progress is kept: the path in GULLWICK_SAVE as it stands, else
    /// Gullwick/progress.json in the user's folder for application data. Nothing is made or checked here.
    static std::filesystem::path progressURL(const Environment& environment);
    /// Where a game keeps what it said: Gullwick/last-run.log in the user's folder for state. Empty when the
    /// user has no home.
    static std::filesystem::path logFile(const Environment& environment);

  private:
    void read();
    void assign(const char* key, Published<bool>& value, bool on);
    void complain(const std::string& what) const;

    std::filesystem::path file_;
    std::string text_;            // the file as last read or written; empty when there is none
    bool isDamaged_ = false;      // text_ is no JSON object
    bool isWritable_ = true;      // false when something is there that could not be read
    bool hasComplained_ = false;  // about a failed write; once is enough

    ChangeNotifier changes_;
    Published<bool> haptics_{changes_, true};
    Published<bool> sound_{changes_, true};
    Published<bool> trackpadSweep_{changes_, true};
    Published<bool> showTicks_{changes_, false};
    Published<bool> reduceMotion_{changes_, false};
};

}  // namespace gull
