#include "Gullwick/Settings/AppSettings.h"

#include "Engine/Files/SmallFile.h"
#include "Engine/Log/Log.h"

#include <fmt/format.h>
#include <pwd.h>
#include <unistd.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <utility>

namespace gull {
namespace {

using nlohmann::json;

namespace fs = std::filesystem;

namespace Key {
constexpr const char* haptics = "haptics";
constexpr const char* sound = "sound";
constexpr const char* trackpadSweep = "trackpadSweep";
constexpr const char* showTicks = "showTicks";
constexpr const char* reduceMotion = "reduceMotion";
}  // namespace Key

/// The object that `text` holds; empty when it holds none.
std::optional<json> parseObject(const std::string& text) {
    auto document = json::parse(text, nullptr, false);
    if (!document.is_object()) return std::nullopt;
    return document;
}

/// What stands under a switch's key, as a boolean: a number is off when it is 0, a text is on when it begins
/// like "yes", "true" or a number that is not 0. All else is off: only an absent key means the default.
bool truth(const json& value) {
    if (value.is_boolean()) return value.get<bool>();
    if (value.is_number()) return value.get<double>() != 0;
    if (!value.is_string()) return false;
    const auto& word = value.get_ref<const std::string&>();
    const std::size_t start = word.find_first_not_of(" \t");
    if (start == word.npos) return false;
    const std::size_t sign = word[start] == '+' || word[start] == '-' ? 1 : 0;
    const std::size_t first = word.find_first_not_of('0', start + sign);
    return first != word.npos && std::string_view("YyTt123456789").find(word[first]) != word.npos;
}

/// The user's home folder; empty when there is none.
fs::path home(const AppSettings::Environment& environment) {
    if (const char* set = environment("HOME"); set && *set) return set;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? fs::path(user->pw_dir) : fs::path();
}

/// `variable` if it holds an absolute path (the XDG rule: relative ones are to be ignored), else `standard`
/// in the user's home; and in it the game's own folder. Empty when there is no home.
fs::path gameFolder(const AppSettings::Environment& environment, [[maybe_unused]] const char* variable,
                    const fs::path& standard) {
#ifndef __APPLE__
    if (const char* set = environment(variable); set && fs::path(set).is_absolute()) {
        return fs::path(set) / "Gullwick";
    }
#endif
    const fs::path base = home(environment);
    return base.empty() ? base : base / standard / "Gullwick";
}

#ifdef __APPLE__
constexpr const char* configurationFolder = "Library/Application Support";
constexpr const char* dataFolder = "Library/Application Support";
constexpr const char* stateFolder = "Library/Logs";
#else
constexpr const char* configurationFolder = ".config";
constexpr const char* dataFolder = ".local/share";
constexpr const char* stateFolder = ".local/state";
#endif

}  // namespace

fs::path AppSettings::defaultFile(const Environment& environment) {
    const fs::path folder = gameFolder(environment, "XDG_CONFIG_HOME", configurationFolder);
    return folder.empty() ? folder : folder / "settings.json";
}

fs::path AppSettings::progressURL(const Environment& environment) {
    if (const char* set = environment("GULLWICK_SAVE")) return set;
    const fs::path folder = gameFolder(environment, "XDG_DATA_HOME", dataFolder);
    return folder.empty() ? folder : folder / "progress.json";
}

fs::path AppSettings::logFile(const Environment& environment) {
    const fs::path folder = gameFolder(environment, "XDG_STATE_HOME", stateFolder);
    return folder.empty() ? folder : folder / "last-run.log";
}

AppSettings::AppSettings(fs::path file) : file_(std::move(file)) {
    read();
}

void AppSettings::read() {
    if (file_.empty()) {
        isWritable_ = false;
        return;
    }
    auto contents = SmallFile::read(file_);
    if (!contents.bytes) {
        if (contents.isMissing) return;
        complain(fmt::format("cannot be read ({}); it stays as it is", contents.failure));
        isWritable_ = false;
        return;
    }
    text_ = std::move(*contents.bytes);
    const auto document = parseObject(text_);
    if (!document) {
        complain("is not a JSON object; every switch stands at its default");
        isDamaged_ = true;
        return;
    }
    const auto readSwitch = [&](const char* key, Published<bool>& value) {
        const auto found = document->find(key);
        if (found == document->end()) return;
        value = truth(*found);
        if (!found->is_boolean() && !found->is_number())
            complain(fmt::format("\"{}\" is neither true nor false; taken as {}", key, value.get()));
    };
    readSwitch(Key::haptics, haptics_);
    readSwitch(Key::sound, sound_);
    readSwitch(Key::trackpadSweep, trackpadSweep_);
    readSwitch(Key::showTicks, showTicks_);
    readSwitch(Key::reduceMotion, reduceMotion_);
}

void AppSettings::setHaptics(bool on) {
    assign(Key::haptics, haptics_, on);
}
void AppSettings::setSound(bool on) {
    assign(Key::sound, sound_, on);
}
void AppSettings::setTrackpadSweep(bool on) {
    assign(Key::trackpadSweep, trackpadSweep_, on);
}
void AppSettings::setShowTicks(bool on) {
    assign(Key::showTicks, showTicks_, on);
}
void AppSettings::setReduceMotion(bool on) {
    assign(Key::reduceMotion, reduceMotion_, on);
}

void AppSettings::assign(const char* key, Published<bool>& value, bool on) {
    value = on;
    if (!isWritable_) return;
    if (isDamaged_) {
        if (const auto kept = SmallFile::setAside(file_, text_); !kept) {
            complain(fmt::format("cannot be set aside as {}.damaged ({}); it stays as it is", file_.string(),
                                 kept.failure));
            isWritable_ = false;
            return;
        }
        isDamaged_ = false;
        text_.clear();
    }
    auto document = parseObject(text_).value_or(json::object());
    document[key] = on;
    text_ = document.dump(4) + '\n';
    if (const auto written = SmallFile::replace(file_, text_); !written && !hasComplained_) {
        complain(fmt::format("is not written ({})", written.failure));
        hasComplained_ = true;
    }
}

void AppSettings::complain(const std::string& what) const {
    Log::say("settings {}: {}", file_.string(), what);
}

}  // namespace gull
