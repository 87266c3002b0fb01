#pragma once

#include <chrono>

namespace gull {

/// Tells how long work takes that is cut to a budget; no time of the stage.
class Stopwatch {
  public:
    /// Seconds since it was made.
    double elapsed() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

  private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace gull
