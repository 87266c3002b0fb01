#pragma once

#include "Engine/Loop/MainLoop.h"

#include <coroutine>
#include <exception>
#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

namespace gull {

/// Stores the result of a task until it is fetched.
template <typename T>
class TaskResult {
  public:
    using Completion = std::function<void(T)>;
    void return_value(T value) { value_ = std::move(value); }
    T take() { return std::move(*value_); }

  private:
    std::optional<T> value_;
};

template <>
class TaskResult<void> {
  public:
    using Completion = std::function<void()>;
    void return_void() noexcept {}
    void take() noexcept {}
};

/// A coroutine that runs on a MainLoop: it yields the thread at every `co_await` and the loop resumes it. It
/// does nothing until another task awaits it or it is started; T (void or a value) is its result.
/// The Task owns the coroutine: destroying it ends the coroutine wherever it waits, destroys its locals and
/// cancels its sleeps. Exceptions do not leave a task: one that is not caught inside stops the program.
template <typename T = void>
class [[nodiscard]] Task {
  public:
    class promise_type;
    using Handle = std::coroutine_handle<promise_type>;
    using Completion = typename TaskResult<T>::Completion;

    Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Task& operator=(Task&& other) noexcept {
        if (this != &other) {
            if (handle_) handle_.destroy();
            handle_ = std::exchange(other.handle_, nullptr);
        }
        return *this;
    }
    ~Task() {
        if (handle_) handle_.destroy();
    }

    /// Runs to the first wait (or the end) at once. `done` is called with the result when the coroutine
    /// ends; it may destroy this Task. May be called once.
    void start(Completion done) {
        handle_.promise().done_ = std::move(done);
        handle_.resume();
    }
    bool isDone() const { return handle_ && handle_.done(); }

    bool await_ready() const noexcept { return false; }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiting) noexcept {
        handle_.promise().awaiting_ = awaiting;
        return handle_;
    }
    T await_resume() { return handle_.promise().take(); }

  private:
    explicit Task(Handle handle) : handle_(handle) {}
    Handle handle_;
};

template <typename T>
class Task<T>::promise_type : public TaskResult<T> {
  public:
    Task get_return_object() { return Task(Handle::from_promise(*this)); }
    std::suspend_always initial_suspend() noexcept { return {}; }
    auto final_suspend() noexcept { return Finish{}; }
    void unhandled_exception() noexcept { std::terminate(); }

  private:
    friend class Task;

    struct Finish {
        bool await_ready() const noexcept { return false; }
        std::coroutine_handle<> await_suspend(Handle handle) noexcept {
            promise_type& promise = handle.promise();
            if (promise.awaiting_) return promise.awaiting_;
            // The completion may destroy the coroutine, so nothing of it is used afterwards.
            if (const Completion done = std::move(promise.done_)) {
                if constexpr (std::is_void_v<T>)
                    done();
                else
                    done(promise.take());
            }
            return std::noop_coroutine();
        }
        void await_resume() const noexcept {}
    };

    std::coroutine_handle<> awaiting_;
    Completion done_;
};

/// The result of sleep(): `co_await` it.
class SleepAwaiter {
  public:
    SleepAwaiter(MainLoop& loop, double seconds) : loop_(loop), seconds_(seconds) {}
    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> handle) {
        timer_ = loop_.after(seconds_, [handle] { handle.resume(); });
    }
    void await_resume() const noexcept {}

  private:
    MainLoop& loop_;
    double seconds_;
    MainLoop::Timer timer_;
};

/// Waits `seconds` on `loop`, which must outlive the wait. With 0 or less the coroutine resumes in the next
/// runDue().
inline SleepAwaiter sleep(MainLoop& loop, double seconds) {
    return SleepAwaiter(loop, seconds);
}

}  // namespace gull
