#include "Engine/Loop/MainLoop.h"

#include "Engine/Log/Require.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <utility>

namespace gull {

struct MainLoop::Timer::Entry {
    double due;
    double interval;  // 0: runs once
    std::uint64_t order;
    std::function<void()> work;
    bool alive = true;
    bool running = false;

    void cancel() {
        alive = false;
        if (!running) work = nullptr;  // releases its captures immediately
    }
};

MainLoop::Timer::Timer(std::shared_ptr<Entry> entry) : entry_(std::move(entry)) {}

MainLoop::Timer& MainLoop::Timer::operator=(Timer&& other) noexcept {
    if (this != &other) {
        cancel();
        entry_ = std::move(other.entry_);
    }
    return *this;
}

MainLoop::Timer::~Timer() {
    cancel();
}

void MainLoop::Timer::cancel() {
    // Destroying the captures may reach this handle again: empty it first.
    if (const auto entry = std::exchange(entry_, nullptr)) entry->cancel();
}

bool MainLoop::Timer::isPending() const {
    return entry_ && entry_->alive;
}

MainLoop::MainLoop(const Clock& clock) : clock_(clock) {}

MainLoop::~MainLoop() {
    const auto entries = std::move(entries_);
    for (const auto& entry : entries) entry->cancel();
}

std::shared_ptr<MainLoop::Timer::Entry> MainLoop::add(double due, double interval,
                                                      std::function<void()> work) {
    auto entry = std::make_shared<Timer::Entry>(
        Timer::Entry{.due = due, .interval = interval, .order = nextOrder_++, .work = std::move(work)});
    entries_.push_back(entry);
    return entry;
}

void MainLoop::pause() {
    if (isPaused_) return;
    pausedAt_ = now();
    isPaused_ = true;
}

void MainLoop::resume() {
    if (!isPaused_) return;
    isPaused_ = false;
    pausedFor_ = clock_.now() - pausedAt_;
}

double MainLoop::dueAfter(double delay) const {
    // The clock may have advanced during a pass; work due "now" still belongs to this pass.
    if (delay <= 0) return inPass_ ? passTime_ : now();
    return now() + delay;
}

MainLoop::Timer MainLoop::every(double interval, std::function<void()> work) {
    require(interval > 0, "MainLoop: a repeating timer needs an interval above 0, not {}", interval);
    return Timer(add(now() + interval, interval, std::move(work)));
}

MainLoop::Timer MainLoop::after(double delay, std::function<void()> work) {
    return Timer(add(dueAfter(delay), 0, std::move(work)));
}

void MainLoop::post(double delay, std::function<void()> work) {
    add(dueAfter(delay), 0, std::move(work));
}

void MainLoop::runDue() {
    // The time is read once, so that a repeating timer whose work takes longer than its interval cannot keep
    // the pass from ending.
    const bool outermost = !inPass_;
    const double time = outermost ? now() : passTime_;
    inPass_ = true;
    passTime_ = time;
    while (!quitting_ && !isPaused_) {
        std::shared_ptr<Timer::Entry> next;
        for (const auto& entry : entries_) {
            if (!entry->alive || entry->running || entry->due > time) continue;
            if (!next || entry->due < next->due || (entry->due == next->due && entry->order < next->order))
                next = entry;
        }
        if (!next) break;
        run(*next, time);
        std::erase_if(entries_, [](const auto& entry) { return !entry->alive && !entry->running; });
    }
    if (outermost) inPass_ = false;
}

void MainLoop::run(Timer::Entry& entry, double time) {
    if (entry.interval > 0) {
        // One run however late it is; the next keeps the original phase.
        entry.due += entry.interval * (std::floor((time - entry.due) / entry.interval) + 1);
        if (entry.due <= time) entry.due += entry.interval;  // the division may round down
    } else {
        entry.alive = false;
    }
    entry.running = true;
    entry.work();
    entry.running = false;
    if (!entry.alive) entry.work = nullptr;
}

double MainLoop::nextDue() const {
    double due = std::numeric_limits<double>::infinity();
    if (isPaused_) return due;
    for (const auto& entry : entries_) {
        if (entry->alive && !entry->running) due = std::min(due, entry->due);
    }
    return due;
}

void MainLoop::quit(int status) {
    quitting_ = true;
    exitStatus_ = status;
}

int MainLoop::runUntilQuit() {
    for (;;) {
        runDue();
        const double due = nextDue();
        if (quitting_ || std::isinf(due)) return exitStatus_;
        const double wait = due - now();
        if (wait > 0) std::this_thread::sleep_for(std::chrono::duration<double>(wait));
    }
}

void MainLoop::turn(ManualClock& clock, double seconds) {
    require(static_cast<const Clock*>(&clock) == &clock_, "MainLoop: turned by a clock that is not its own");
    const double end = clock.now() + seconds;
    while (!quitting_) {
        const double due = nextDue() + pausedFor_;
        if (due > end) break;
        clock.moveTo(due);
        runDue();
    }
    if (!quitting_) clock.moveTo(end);
}

}  // namespace gull
