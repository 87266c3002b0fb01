#include "Gullwick/App/CommandLine.h"

#include "Gullwick/App/Numbers.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <numeric>

#ifndef GULL_VERSION
#define GULL_VERSION "unknown"
#endif

namespace gull {

namespace {

struct Flag {
    std::string_view name;
    std::string_view value;  ///< what follows it, in brackets where it may; empty: nothing does
    std::string_view text;
    /// Whether it can make something of a value; null where it takes any, or has its own words for a wrong
    /// one.
    bool (*reads)(std::string_view) = nullptr;

    bool takesAny() const { return !reads && !value.empty() && value.front() != '['; }
};

template <auto parse>
bool readsBy(std::string_view value) {
    return parse(value).has_value();
}

constexpr std::array flags = {
    Flag{"--shot", "FILE", "render a moment of play to a PNG file (default shot.png)"},
    Flag{"--icon", "FILE", "the same, close up on the coil's spot"},
    Flag{"--icons", "FOLDER", "write a PNG of every item into FOLDER"},
    Flag{"--size", "WxH", "size of the picture in points (default 1400x900)"},
    Flag{"--beach", "N", "which beach, 1 to 8 (default 1)", readsBy<parseInteger>},
    Flag{"--seed", "N", "bury by this seed: the same picture every time", readsBy<parseUnsigned>},
    Flag{"--elapse", "SECONDS", "let that much tide run first", readsBy<parseNumber>},
    Flag{"--find", "COUNT", "dig up the first COUNT treasures", readsBy<parseInteger>},
    Flag{"--junk", "COUNT", "dig up the first COUNT pieces of junk", readsBy<parseInteger>},
    Flag{"--coil", "X,Y", "put the coil there, each 0 to 1", readsBy<parsePoint>},
    Flag{"--trail", "", "sweep a wavy trail across the plot"},
    Flag{"--reveal", "SECONDS", "catch the next treasure that long after its dig", readsBy<parseNumber>},
    Flag{"--ping", "", "show the ping arrow"},
    Flag{"--flood", "", "let the sea flood the beach"},
    Flag{"--finish", "", "end the beach: the result card"},
    Flag{"--select", "", "open the beach select"},
    Flag{"--nohud", "", "the scene alone"},
    Flag{"--selftest", "[BEACHES]",
         "play the rules through and print what was checked, for all beaches or \"2,5\""},
    Flag{"--devices", "", "print the devices found and chosen"},
    Flag{"--help", "", "print this"},
    Flag{"--version", "", "print the version"},
};

const Flag* findFlag(std::string_view word) {
    const auto found =
        std::find_if(flags.begin(), flags.end(), [&](const Flag& flag) { return flag.name == word; });
    return found == flags.end() ? nullptr : &*found;
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
    if (has("--shot") || has("--icon") || has("--icons")) return Mode::snapshot;
    if (has("--selftest")) return Mode::selfTest;
    return Mode::game;
}

std::vector<std::string> CommandLine::complaints() const {
    std::vector<std::string> result;
    const bool testsItself = mode() == Mode::selfTest;
    for (std::size_t i = 0; i < arguments_.size(); ++i) {
        const std::string& word = arguments_[i];
        if (findFlag(word)) continue;
        const Flag* before = i > 0 ? findFlag(arguments_[i - 1]) : nullptr;
        if (before && !before->value.empty()) continue;
        if (i + 1 == arguments_.size() && testsItself) continue;  // the beaches
        result.push_back(fmt::format(
            "\"{}\" is no option of Gullwick and is ignored. Did you mean {}? (--help lists them)", word,
            closestFlag(word)));
    }
    for (const Flag& flag : flags) {
        if (testsItself || !has(flag.name)) continue;
        const auto given = value(flag.name);
        if (flag.reads && !(given && flag.reads(*given))) {
            const std::string what = given ? fmt::format("\"{}\" is none", *given) : "nothing follows";
            result.push_back(
                fmt::format("{0} takes {1}; {2}, and {0} has no effect", flag.name, flag.value, what));
        } else if (flag.takesAny() && given && findFlag(*given)) {
            result.push_back(fmt::format("{} takes {}, and the next word, \"{}\", is taken for it", flag.name,
                                         flag.value, *given));
        }
    }
    return result;
}

std::string CommandLine::help() {
    std::string text =
        "Gullwick: the trackpad is a beach.\n"
        "\n"
        "gullwick [options]      play (with ./play from the source folder: ./play [options])\n"
        "\n";
    for (const Flag& flag : flags) {
        text += fmt::format(
            "  {:<22}{}\n",
            flag.value.empty() ? std::string(flag.name) : fmt::format("{} {}", flag.name, flag.value),
            flag.text);
    }
    text +=
        "\n"
        "Environment:\n"
        "  GULLWICK_SAVE         the progress file\n"
        "  GULLWICK_SCALE        pixels a point, 0.5 to 4\n"
        "  GULLWICK_PROBE        measure the frame rate, write a picture to this path, exit\n"
        "  GULLWICK_PROBE_BEACH  on this beach\n"
        "  GW_CAM, GW_LOOK       camera position and look point, \"x,y,z\"\n"
        "  GW_FOV                field of view, degrees\n"
        "\n"
        "Benchmarks: cmake --preset benchmark && cmake --build --preset benchmark, then "
        "build/Benchmarks/*Benchmark\n";
    return text;
}

std::string CommandLine::version() {
    return "Gullwick " GULL_VERSION;
}

}  // namespace gull
