#pragma once

#include "Engine/Loop/MainLoop.h"
#include "Engine/Raster/Image.h"

#include <cstdint>
#include <functional>
#include <string>

namespace gull {

class GameController;

/// Measures how many frames per second the game presents while the coil sweeps a fixed figure, prints the
/// result, saves a picture of the scene measured and ends the program.
class FrameProbe {
  public:
    static constexpr double warmUp = 2.0;    ///< seconds before counting
    static constexpr double interval = 4.0;  ///< seconds counted

    /// The subject of the measurement.
    struct View {
        std::function<int()> width;  ///< points
        std::function<int()> height;
        std::function<double()> scale;    ///< pixels a point
        std::function<Image()> snapshot;  ///< the scene on display, in pixels; empty if it cannot be read
    };

    /// Starts at once. The picture goes to `path`. Everything must outlive the probe.
    FrameProbe(MainLoop& loop, GameController& game, View view, std::string path);

    /// Call once for every frame presented.
    void framePresented() { ++frames_; }

  private:
    void sweep();
    void report();

    MainLoop& loop_;
    GameController& game_;
    View view_;
    std::string path_;
    std::int64_t frames_ = 0;
    std::int64_t firstFrame_ = 0;
    double firstTime_ = 0;
    double sweepClock_ = 0;
    MainLoop::Timer sweepTimer_;
    MainLoop::Timer stageTimer_;
};

}  // namespace gull
