#pragma once

#include "Gullwick/App/CommandLine.h"

#include <functional>
#include <memory>

namespace gull {

class GameController;
class MainLoop;

/// The cost of one presented frame, seconds.
struct FrameTiming {
    double time = 0;          ///< uptime at which the swap returned
    double work = 0;          ///< from the frame's step to the swap's return
    bool isComplete = false;  ///< the still part of the picture has its final quality
};

/// The game in its window: creates everything once, in the order of dependency, and runs until the window
/// closes. Each frame goes in one direction: devices, input, the controller's step, scene and overlay drawn,
/// presented.
///
/// Single-threaded.
class AppDelegate {
  public:
    /// Throws std::runtime_error with a message for the player if there is no display, no OpenGL 3.3 or no
    /// font.
    explicit AppDelegate(const CommandLine& commandLine);
    ~AppDelegate();
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// Runs until the player quits; returns the process's exit status.
    int run();

    // --- For whoever drives the game from outside instead of a player: benchmarks.
    GameController& game();
    MainLoop& loop();
    /// Called after every frame presented.
    void onFrame(std::function<void(const FrameTiming&)> observer);

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace gull
