#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace gull {

/// Turns a fuzzer's bytes into values; zeros when none are left.
class FuzzInput {
  public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : bytes_(data, size) {}

    bool isEmpty() const { return bytes_.empty(); }
    template <typename T>
    T take() {
        T value{};
        const std::size_t count = std::min(sizeof value, bytes_.size());
        std::memcpy(&value, bytes_.data(), count);
        bytes_ = bytes_.subspan(count);
        return value;
    }
    /// A whole number below `end`.
    int below(int end) { return take<std::uint8_t>() % end; }
    /// Mostly from 0 to 1; now and then anything that a double can be.
    double share() {
        if (below(16) == 0) return take<double>();
        return take<std::uint16_t>() / 65535.0;
    }
    std::string rest() { return {reinterpret_cast<const char*>(bytes_.data()), bytes_.size()}; }

  private:
    std::span<const std::uint8_t> bytes_;
};

/// Meaningful inputs, for the driver that has no coverage to learn from; each target has its own.
extern const std::initializer_list<const char*> fuzzSeeds;

}  // namespace gull

/// Runs a target on one input. It aborts when something is wrong.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
