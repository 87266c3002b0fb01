#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <optional>

namespace gull {

/// A bounded lock-free queue from one thread to one other. `Capacity` must be a power of two.
template <typename T, std::size_t Capacity>
class SpscQueue {
    static_assert((Capacity & (Capacity - 1)) == 0);

  public:
    /// Called by the producer; false if the queue is full, and then `value` is not added.
    bool push(const T& value) {
        const std::size_t written = written_.load(std::memory_order_relaxed);
        if (written - read_.load(std::memory_order_acquire) == Capacity) return false;
        slots_[written % Capacity] = value;
        written_.store(written + 1, std::memory_order_release);
        return true;
    }

    /// Called by the consumer; empty if the queue is empty.
    std::optional<T> pop() {
        const std::size_t read = read_.load(std::memory_order_relaxed);
        if (read == written_.load(std::memory_order_acquire)) return std::nullopt;
        const T value = slots_[read % Capacity];
        read_.store(read + 1, std::memory_order_release);
        return value;
    }

  private:
    std::array<T, Capacity> slots_{};
    std::atomic<std::size_t> written_ = 0;
    std::atomic<std::size_t> read_ = 0;
};

}  // namespace gull
