#pragma once

namespace gull {

/// When finished pictures are to be shown: at even intervals, although some take longer to draw than others.
/// Pictures wait as short as the last second's slowest ones allow.
class PresentPace {
  public:
    /// `interval`: from picture to picture, seconds.
    explicit PresentPace(double interval) : interval_(interval) {}

    /// The time to show a picture that was finished at `now`: then or later, at most one interval. Seconds of
    /// any clock that does not jump; call once for each picture.
    double timeFor(double now);

  private:
    static constexpr int watched = 60;       ///< pictures between two looks at how long they had to wait
    static constexpr double spare = 0.0015;  ///< seconds that the shortest wait keeps
    static constexpr double step = 0.0001;  ///< seconds by which a picture may be shown earlier than its turn

    double interval_;
    double last_ = -1e9;
    double shortest_ = 1;  ///< wait since the last look
    double excess_ = 0;    ///< seconds by which pictures wait too long
    int seen_ = 0;
};

}  // namespace gull
