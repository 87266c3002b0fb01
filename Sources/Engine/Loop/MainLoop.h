#pragma once

#include "Engine/Loop/Clock.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

namespace gull {

/// Timers and delayed work of the program's thread. It does not wait by itself: a window, a self-test or a
/// test with a manual clock drives it by calling runDue() whenever something may be due, and sleeps until
/// nextDue().
///
/// Single-threaded: every call is made from the thread that made the loop. Work may schedule or cancel other
/// work, and may quit the loop. Work due at the same instant runs in the order in which it was scheduled.
class MainLoop {
  public:
    /// Cancels its work when destroyed. Move-only; an empty handle cancels nothing.
    class Timer {
      public:
        Timer() = default;
        Timer(Timer&&) noexcept = default;
        Timer& operator=(Timer&& other) noexcept;
        ~Timer();
        void cancel();
        /// True while the work may still run.
        bool isPending() const;

      private:
        friend class MainLoop;
        struct Entry;
        explicit Timer(std::shared_ptr<Entry> entry);
        std::shared_ptr<Entry> entry_;
    };

    /// `clock` is owned by the caller and must outlive the loop.
    explicit MainLoop(const Clock& clock);
    ~MainLoop();
    MainLoop(const MainLoop&) = delete;
    MainLoop& operator=(const MainLoop&) = delete;

    const Clock& clock() const { return clock_; }
    /// The loop's time: the clock's, less all pauses.
    double now() const { return isPaused_ ? pausedAt_ : clock_.now() - pausedFor_; }

    /// Stops the loop's time: nothing falls due until resume(), which lets everything go on where it stood.
    /// Each does nothing when called again.
    void pause();
    void resume();
    bool isPaused() const { return isPaused_; }

    /// Runs `work` every `interval` seconds (above 0), first after one interval. A late loop runs it once,
    /// not once per missed interval, and keeps the phase.
    [[nodiscard]] Timer every(double interval, std::function<void()> work);
    /// Runs `work` once, `delay` seconds from now (a delay <= 0: at the next runDue()).
    [[nodiscard]] Timer after(double delay, std::function<void()> work);
    /// The same without a handle: cannot be cancelled.
    void post(double delay, std::function<void()> work);

    /// Runs everything due at now(), in order of due time, until quit() is called. Work scheduled meanwhile
    /// for now runs too. The time is read once, so slow work cannot keep this call from returning.
    void runDue();
    /// The loop's time at which the next work is due; +infinity when there is none, and in a pause.
    double nextDue() const;

    /// Asks whoever drives the loop to stop; `status` becomes the process's exit status.
    void quit(int status = 0);
    bool quitting() const { return quitting_; }
    int exitStatus() const { return exitStatus_; }

    /// Sleeps and runs due work until quit() is called or nothing is left to run; returns exitStatus(). For a
    /// process without a window; the clock must move by itself.
    int runUntilQuit();
    /// Advances `clock` (which must be this loop's) by `seconds`, running each piece of work at its due time;
    /// stops early when the loop quits.
    void turn(ManualClock& clock, double seconds);

  private:
    std::shared_ptr<Timer::Entry> add(double due, double interval, std::function<void()> work);
    double dueAfter(double delay) const;
    void run(Timer::Entry& entry, double time);

    const Clock& clock_;
    bool isPaused_ = false;
    double pausedAt_ = 0;   // the loop's time
    double pausedFor_ = 0;  // seconds, all pauses that are over
    std::vector<std::shared_ptr<Timer::Entry>> entries_;
    std::uint64_t nextOrder_ = 0;
    bool inPass_ = false;
    double passTime_ = 0;
    bool quitting_ = false;
    int exitStatus_ = 0;
};

}  // namespace gull
