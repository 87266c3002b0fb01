#pragma once

#include "Gullwick/App/CommandLine.h"

#include <functional>
#include <memory>

namespace gull {

class GameController;
class MainLoop;

/// What one presented frame took, seconds.
struct FrameTiming {
    double time = 0;          ///< uptime at which the swap returned
    double work = 0;          ///< from the frame's step to the swap's return
    bool isComplete = false;  ///< the resting part of the picture is at its final quality
};

/// The game in its window: makes everything once, in the order in which one part needs another, and runs
/// until the window closes. One direction for a frame: devices, then input, then the controller's step, then
/// scene and overlay drawn, then presented.
///
/// Single-threaded.
class AppDelegate {
  public:
    /// Throws std::runtime_error with a message for the player when there is no display, no OpenGL 3.3 or no
    /// font.
    explicit AppDelegate(const CommandLine& commandLine);
    ~AppDelegate();
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// Until the player quits; the process's exit status.
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
