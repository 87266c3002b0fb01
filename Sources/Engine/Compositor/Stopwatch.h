#pragma once

#include <chrono>

namespace gull {

/// Measures work that has a time budget, in real time; independent of the stage's time.
class Stopwatch {
  public:
    /// Seconds since construction.
    double elapsed() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

  private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace gull
