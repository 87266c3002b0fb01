#pragma once

#include "Engine/Loop/Published.h"
#include "Gullwick/Settings/SettingsFile.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

namespace gull {

/// One setting, stored under its key: `settings.volume()` reads it, `settings.volume = 80` changes it in
/// memory and in the file at once. Observers are notified just before; every assignment is announced and
/// written, even of an equal value. `T` is bool, int or std::string.
template <typename T>
class Setting {
    static_assert(std::is_same_v<T, bool> || std::is_same_v<T, int> || std::is_same_v<T, std::string>);

  public:
    /// `value` applies until another is stored. `file` and `changes` outlive the setting.
    Setting(SettingsFile& file, ChangeNotifier& changes, const char* key, T value)
        : file_(file), key_(key), value_(changes, value) {
        if constexpr (std::is_same_v<T, int>)
            value_ = static_cast<int>(file.read(key_, std::int64_t{value}, least_, most_));
        else
            value_ = file.read(key_, value);
    }
    /// A number from `least` to `most`; values in the file beyond these limits are clamped.
    Setting(SettingsFile& file, ChangeNotifier& changes, const char* key, int value, int least,
            int most) requires std::is_same_v<T, int>
        : file_(file), key_(key), value_(changes, value), least_(least), most_(most) {
        value_ = static_cast<int>(file.read(key_, std::int64_t{value}, least, most));
    }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    const T& operator()() const { return value_; }

    Setting& operator=(T value) {
        if constexpr (std::is_same_v<T, int>) value = std::min(std::max(value, least_), most_);
        value_ = value;
        if constexpr (std::is_same_v<T, int>)
            file_.write(key_, std::int64_t{value});
        else
            file_.write(key_, value);
        return *this;
    }

  private:
    SettingsFile& file_;
    std::string key_;
    Published<T> value_;
    int least_ = std::numeric_limits<int>::min();
    int most_ = std::numeric_limits<int>::max();
};

}  // namespace gull
