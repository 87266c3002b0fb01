#pragma once

#include "Session/Process.h"

#include <chrono>
#include <functional>

namespace gull::session {

/// The longest that anything is waited for, seconds; only what fails takes so long.
constexpr double patience = 120;

/// Looks again and again until `isDone`; false after `patience`.
inline bool eventually(const std::function<bool()>& isDone) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(patience);
    while (!isDone()) {
        if (std::chrono::steady_clock::now() > end) return false;
        pause(0.02);
    }
    return true;
}

/// What a game that was started with GULLWICK_TRACE tells of itself. A test waits for what the game has done,
/// however long that takes on a busy machine.
class GameTrace {
  public:
    explicit GameTrace(std::filesystem::path file) : file_(std::move(file)) {}

    /// The present value of "phase", "holes" and the like; empty before there is one.
    std::string value(const std::string& key) const;
    double number(const std::string& key) const { return std::atof(value(key).c_str()); }
    /// The game's clock at each picture shown.
    std::vector<double> frames() const;
    /// The game's clock at each change of `key`.
    std::vector<double> changes(const std::string& key) const;

    bool wait(const std::string& key, const std::string& start) const {
        return eventually([&] { return value(key).starts_with(start); });
    }
    bool waitForCoil(double x, double y) const;
    bool waitForPictures(std::size_t count) const {
        const std::size_t before = frames().size();
        return eventually([&] { return frames().size() >= before + count; });
    }

  private:
    std::vector<std::string> lines() const;
    static std::string valueIn(const std::string& line, const std::string& key);

    std::filesystem::path file_;
};

}  // namespace gull::session
