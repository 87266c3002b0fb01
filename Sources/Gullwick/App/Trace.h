#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace gull {

class AudioDevice;
class GameController;
class Trackpads;
class Window;

/// For sessions played by a script: writes what a player would see, a line per change, and a line for every
/// frame shown, to the file named by GULLWICK_TRACE. Times are uptime in seconds.
class Trace {
  public:
    Trace();

    /// Records the current state and whether the game has the player's attention; cheap if nobody asked for a
    /// trace.
    void follow(double now, bool isMeant, const GameController& game, const Window& window,
                const Trackpads& trackpads, const AudioDevice& audio);
    void frameShown(double now);

  private:
    struct Closed {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Closed> file_;
    std::string last_;
};

}  // namespace gull
