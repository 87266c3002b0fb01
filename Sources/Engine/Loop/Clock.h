#pragma once

namespace gull {

/// The only source of time. Everything that is delayed, animated or expires reads it through this interface,
/// so that a test can advance it by hand and play an hour in a second.
class Clock {
  public:
    virtual ~Clock() = default;
    /// Seconds since an arbitrary start; never goes backwards.
    virtual double now() const = 0;
};

/// The system's monotonic uptime, in seconds.
class UptimeClock final : public Clock {
  public:
    double now() const override;
};

/// A clock that advances only when told to.
class ManualClock final : public Clock {
  public:
    explicit ManualClock(double start = 1000.0) : time_(start) {}
    double now() const override { return time_; }
    /// Moves to `time` (seconds); an earlier time than now() is ignored.
    void moveTo(double time);

  private:
    double time_;
};

}  // namespace gull
