#pragma once

#include "Engine/Loop/MainLoop.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace gull {

/// Schedules work for later that can be cancelled all at once.
class DelayedWork {
  public:
    /// `loop` is owned by the caller and must outlive this object.
    explicit DelayedWork(MainLoop& loop) : loop_(loop) {}

    /// Runs `work` `delay` seconds from now unless cancelPending() comes first.
    void after(double delay, std::function<void()> work);
    /// Cancels everything that has not run yet and resets pendingCount().
    void cancelPending();
    /// How much was scheduled since the last cancelPending(), run or not.
    std::size_t pendingCount() const { return pending_.size(); }

  private:
    MainLoop& loop_;
    std::vector<MainLoop::Timer> pending_;
};

}  // namespace gull
