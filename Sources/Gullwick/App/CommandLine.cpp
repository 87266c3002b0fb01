#include "Gullwick/App/CommandLine.h"

#include "Gullwick/App/Numbers.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#ifndef GULL_VERSION
#define GULL_VERSION "unknown"
#endif

namespace gull {

namespace {

/// The modes in which an option has an effect.
enum class Scope { program, game, scene };

struct Flag {
    std::string_view name;
    std::string_view value = {};  ///< its value, in brackets if optional; empty: it takes none
    Scope scope = Scope::program;
    /// Whether it can use a value; null if it takes any, or reports wrong ones itself.
    bool (*reads)(std::string_view) = nullptr;

    bool takesValue() const { return !value.empty(); }
    bool needsValue() const { return takesValue() && value.front() != '['; }
    bool takesAny() const { return !reads && needsValue(); }
};

template <auto parse>
bool readsBy(std::string_view value) {
    return parse(value).has_value();
}

constexpr std::array flags = {
    Flag{"--shot", "FILE"},
    Flag{"--icon", "FILE"},
    Flag{"--icons", "FOLDER"},
    Flag{"--size", "WxH", Scope::scene},
    Flag{"--beach", "N", Scope::scene, readsBy<parseInteger>},
    Flag{"--seed", "N", Scope::program, readsBy<parseUnsigned>},
    Flag{"--elapse", "SECONDS", Scope::scene, readsBy<parseNumber>},
    Flag{"--find", "COUNT", Scope::scene, readsBy<parseInteger>},
    Flag{"--junk", "COUNT", Scope::scene, readsBy<parseInteger>},
    Flag{"--coil", "X,Y", Scope::scene, readsBy<parsePoint>},
    Flag{"--trail", "", Scope::scene},
    Flag{"--reveal", "SECONDS", Scope::scene, readsBy<parseNumber>},
    Flag{"--ping", "", Scope::scene},
    Flag{"--flood", "", Scope::scene},
    Flag{"--finish", "", Scope::scene},
    Flag{"--select", "", Scope::scene},
    Flag{"--nohud", "", Scope::scene},
    Flag{"--fullscreen", "", Scope::game},
    Flag{"--selftest", "[BEACHES]"},
    Flag{"--app-icons", "FOLDER"},
    Flag{"--allow-touchpad"},
    Flag{"--devices"},
    Flag{"--help"},
    Flag{"--version"},
};

/// Fits a screen of 24 lines and 80 columns.
constexpr std::string_view helpText =
    R"(Usage: gullwick [OPTION]...      (from the source folder: ./play [OPTION]...)
Gullwick: the trackpad is a beach. Without an option the game opens its window.

      --fullscreen          open it as large as the screen
      --seed N              bury by this seed: the same beaches every time
      --selftest [BEACHES]  play the rules through, on all beaches or on "2,5"
      --devices             print the devices found and chosen
      --allow-touchpad      as root: allow reading the touchpad, for good
  -h, --help                print this
  -v, --version             print the version
Pictures, without a window (--shot FILE and --shot=FILE are the same):
      --shot FILE           write a moment of play as a PNG (default shot.png)
      --icon FILE           the same, close up on the coil's spot
      --icons FOLDER        write a PNG of every item into FOLDER
      --app-icons FOLDER    write the game's own icon, for icon themes
  What --shot and --icon show: --size WxH (default 1400x900), --beach N (1-8),
  --seed N, --elapse SECONDS of tide, --find COUNT treasures, --junk COUNT,
  --coil X,Y (each 0 to 1), --trail, --reveal SECONDS after one more dig,
  --ping, --flood, --finish (the result card), --select (all beaches), --nohud
Environment:
  GULLWICK_SAVE         the progress file
  GULLWICK_SCALE        pixels a point, 0.5 to 4
  GULLWICK_PROBE, GULLWICK_PROBE_BEACH  measure the frame rate: picture, beach
  GW_CAM, GW_LOOK, GW_FOV  camera: two points "x,y,z", field of view in degrees
)";

const Flag* findFlag(std::string_view word) {
    const auto found =
        std::find_if(flags.begin(), flags.end(), [&](const Flag& flag) { return flag.name == word; });
    return found == flags.end() ? nullptr : &*found;
}

/// The missing option without which this one has no effect; empty if it has one.
std::string missingFor(const Flag& flag, Mode mode, bool drawsScene) {
    if (flag.scope == Scope::scene && mode == Mode::game)
        return fmt::format("{} only shapes a picture and has no effect in the game; add --shot FILE",
                           flag.name);
    if (flag.scope == Scope::scene && mode == Mode::snapshot && !drawsScene)
        return fmt::format("{} has no effect on --icons; add --shot FILE instead of it", flag.name);
    if (flag.scope == Scope::game && mode == Mode::snapshot)
        return fmt::format("{} has no effect on a picture", flag.name);
    return {};
}

/// Levenshtein's distance: insertions, deletions and replacements that turn one word into the other.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
        }
    }
    return row[b.size()];
}

std::string_view closestFlag(std::string_view word) {
    return std::min_element(flags.begin(), flags.end(),
                            [&](const Flag& a, const Flag& b) {
                                return editDistance(word, a.name) < editDistance(word, b.name);
                            })
        ->name;
}

}  // namespace

/// "-h" and "-v" become the words they stand for, "--shot=FILE" becomes two; a word that an option takes for
/// its value stays as it is.
CommandLine::CommandLine(const std::vector<std::string>& words) {
    bool isValue = false;
    for (const std::string& word : words) {
        const bool wasValue = std::exchange(isValue, false);
        const std::size_t equals = word.find('=');
        const Flag* flag = findFlag(std::string_view(word).substr(0, equals));
        if (!wasValue && word == "-h") {
            arguments_.emplace_back("--help");
        } else if (!wasValue && word == "-v") {
            arguments_.emplace_back("--version");
        } else if (flag && equals != std::string::npos) {
            arguments_.emplace_back(flag->name);
            if (flag->takesValue())
                arguments_.push_back(word.substr(equals + 1));
            else
                problems_.push_back(
                    fmt::format("{} takes no value; \"{}\" is ignored", flag->name, word.substr(equals + 1)));
        } else {
            arguments_.push_back(word);
            isValue = flag && flag->needsValue();
        }
    }
}

bool CommandLine::has(std::string_view flag) const {
    return std::find(arguments_.begin(), arguments_.end(), flag) != arguments_.end();
}

std::optional<std::string> CommandLine::value(std::string_view flag) const {
    const auto found = std::find(arguments_.begin(), arguments_.end(), flag);
    if (found == arguments_.end() || found + 1 == arguments_.end()) return std::nullopt;
    return *(found + 1);
}

Mode CommandLine::mode() const {
    if (has("--help")) return Mode::help;
    if (has("--version")) return Mode::version;
    if (has("--devices")) return Mode::devices;
    if (has("--allow-touchpad")) return Mode::allowTouchpad;
    if (has("--app-icons")) return Mode::appIcons;
    if (has("--shot") || has("--icon") || has("--icons")) return Mode::snapshot;
    if (has("--selftest")) return Mode::selfTest;
    return Mode::game;
}

std::vector<std::string> CommandLine::complaints() const {
    std::vector<std::string> result = problems_;
    const bool testsItself = mode() == Mode::selfTest;
    for (std::size_t i = 0; i < arguments_.size(); ++i) {
        const std::string& word = arguments_[i];
        if (findFlag(word)) continue;
        const Flag* before = i > 0 ? findFlag(arguments_[i - 1]) : nullptr;
        if (before && before->takesValue()) continue;
        if (i + 1 == arguments_.size() && testsItself) continue;  // the beaches
        result.push_back(fmt::format(
            "\"{}\" is not an option of Gullwick and is ignored. Did you mean {}? (--help lists them)", word,
            closestFlag(word)));
    }
    for (const Flag& flag : flags) {
        if (testsItself || !has(flag.name)) continue;
        if (const std::string missing = missingFor(flag, mode(), has("--shot") || has("--icon"));
            !missing.empty()) {
            result.push_back(missing);
            continue;
        }
        const auto given = value(flag.name);
        if (flag.reads && !(given && flag.reads(*given))) {
            const std::string what = given ? fmt::format("not \"{}\"", *given) : "but nothing follows";
            result.push_back(fmt::format("{} takes {}, {}; ignored", flag.name, flag.value, what));
        } else if (flag.takesAny() && given && findFlag(*given)) {
            result.push_back(fmt::format("{} takes {}, and the next word, \"{}\", is taken for it", flag.name,
                                         flag.value, *given));
        }
    }
    return result;
}

std::string CommandLine::help() {
    return std::string(helpText);
}

std::string CommandLine::version() {
    return "Gullwick " GULL_VERSION;
}

}  // namespace gull
