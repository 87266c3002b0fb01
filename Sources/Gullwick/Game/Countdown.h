#pragma once

namespace gull {

/// Counts the last seconds of the tide: announces each whole second from 10 to 1 once, when the time left
/// enters it. If the time left jumps, the seconds in between stay silent.
class Countdown {
  public:
    static constexpr double span = 10;  ///< seconds

    void reset() { last_ = 0; }
    /// True when `remaining` seconds of tide have just entered a second to be announced.
    bool advance(double remaining);

  private:
    int last_ = 0;
};

}  // namespace gull
