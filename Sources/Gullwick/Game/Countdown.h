#pragma once

namespace gull {

/// Counts the last seconds of the tide: each of the whole seconds 10 to 1 is announced once, as the time left
/// enters it. When the time left jumps, the seconds it passes over stay silent.
class Countdown {
  public:
    static constexpr double span = 10;  ///< seconds

    void reset() { last_ = 0; }
    /// True when `remaining` seconds of tide have just entered a second that is to be announced.
    bool advance(double remaining);

  private:
    int last_ = 0;
};

}  // namespace gull
