#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace gull {

/// Tells the observers of an object that one of its published properties is about to change.
class ChangeNotifier {
  public:
    /// Keeps an observer observing; destroying or resetting it ends the observation. It may outlive the
    /// notifier.
    using Observation = std::shared_ptr<const void>;
    /// `observer` is called just before each change, while the old values can still be read. It may start and
    /// end observations, its own included.
    [[nodiscard]] Observation observe(std::function<void()> observer);
    void willChange();

  private:
    using Observer = std::function<void()>;
    std::vector<std::weak_ptr<const Observer>> observers_;
};

/// A property of an observable object: reads like a value, and every assignment (even of an equal value)
/// first notifies the owner's observers.
template <typename T>
class Published {
  public:
    /// `notifier` belongs to the object that owns the property and must outlive it.
    explicit Published(ChangeNotifier& notifier, T value = T{})
        : notifier_(notifier), value_(std::move(value)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    const T& get() const { return value_; }
    operator const T&() const { return value_; }
    const T* operator->() const { return &value_; }

    Published& operator=(T value) {
        notifier_.willChange();
        value_ = std::move(value);
        return *this;
    }
    /// Changes the value in place; observers are notified first.
    template <typename F>
    decltype(auto) mutate(F&& change) {
        notifier_.willChange();
        return std::forward<F>(change)(value_);
    }

  private:
    ChangeNotifier& notifier_;
    T value_;
};

}  // namespace gull
