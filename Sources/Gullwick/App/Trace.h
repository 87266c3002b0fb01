#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace gull {

class AudioDevice;
class GameController;
class Trackpads;
class Window;

/// For sessions that a script plays: what a player would see, a line whenever it changes, and a line for
/// every frame shown, in the file that the environment's GULLWICK_TRACE names. Times are uptime in seconds.
class Trace {
  public:
    Trace();

    /// What is there now, and whether the player means the game; cheap when nobody asked for a trace.
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
