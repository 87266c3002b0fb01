#include "Gullwick/App/SnapshotOptions.h"

#include "Gullwick/App/BeachNumber.h"
#include "Gullwick/App/Numbers.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <vector>

namespace gull {

namespace {

/// Narrows to int; values far beyond any use stay far beyond any use.
int narrowed(std::int64_t value) {
    constexpr std::int64_t limit = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, -limit, limit));
}

std::optional<std::string> readSize(const std::string& text, SnapshotOptions& options) {
    std::vector<std::int64_t> numbers;
    for (const std::string_view piece : split(text, 'x')) {
        if (const auto number = parseInteger(piece)) numbers.push_back(*number);
    }
    if (numbers.size() < 2) {
        return fmt::format("--size takes two whole numbers, like 1400x900; \"{}\" holds {}", text,
                           numbers.size());
    }
    if (numbers[0] < 1 || numbers[1] < 1) {
        return fmt::format("--size {}: a picture is at least one point wide and high", text);
    }
    options.width = narrowed(numbers[0]);
    options.height = narrowed(numbers[1]);
    return std::nullopt;
}

std::optional<std::string> readCount(const CommandLine& commandLine, std::string_view flag, int& count) {
    const auto text = commandLine.value(flag);
    const auto number = text ? parseInteger(*text) : std::nullopt;
    if (!number) return std::nullopt;
    if (*number < 0) return fmt::format("{} counts digs and cannot be negative; it was {}", flag, *text);
    count = narrowed(*number);
    return std::nullopt;
}

/// Reads a number of seconds; beyond a day from now there is nothing to see.
std::optional<std::string> readSeconds(const CommandLine& commandLine, std::string_view flag,
                                       std::optional<double>& seconds) {
    constexpr double most = 86400;
    const auto text = commandLine.value(flag);
    seconds = text ? parseNumber(*text) : std::nullopt;
    if (!seconds || std::abs(*seconds) <= most) return std::nullopt;
    return fmt::format("{} takes seconds, {:.0f} at most; it was {}", flag, most, *text);
}

/// Reads the coil's place; slightly beside the plot is allowed.
std::optional<std::string> readCoil(const CommandLine& commandLine, std::optional<PlotPoint>& coil) {
    const auto text = commandLine.value("--coil");
    coil = text ? parsePoint(*text) : std::nullopt;
    const auto isNear = [](double share) { return share >= -1 && share <= 2; };
    if (!coil || (isNear(coil->x) && isNear(coil->y))) return std::nullopt;
    return fmt::format("--coil takes a place on the plot, each number from 0 to 1; it was {}", *text);
}

}  // namespace

std::variant<SnapshotOptions, std::string> SnapshotOptions::parse(const CommandLine& commandLine) {
    SnapshotOptions options;
    options.iconsFolder = commandLine.value("--icons");
    if (options.iconsFolder) return options;  // there is no scene that could be wrong
    if (const auto size = commandLine.value("--size")) {
        if (const auto problem = readSize(*size, options)) return *problem;
    }
    if (const auto text = commandLine.value("--beach")) {
        const auto number = parseInteger(*text);
        if (number) {
            if (const auto problem = beachProblem(*number)) return "--beach: " + *problem;
            options.beach = narrowed(*number);
        }
    }
    if (const auto text = commandLine.value("--seed")) options.seed = parseUnsigned(*text);
    if (const auto problem = readCount(commandLine, "--find", options.find)) return *problem;
    if (const auto problem = readCount(commandLine, "--junk", options.junk)) return *problem;
    if (const auto problem = readSeconds(commandLine, "--elapse", options.elapse)) return *problem;
    if (const auto problem = readCoil(commandLine, options.coil)) return *problem;
    options.trail = commandLine.has("--trail");
    if (const auto problem = readSeconds(commandLine, "--reveal", options.reveal)) return *problem;
    options.ping = commandLine.has("--ping");
    options.flood = commandLine.has("--flood");
    options.finish = commandLine.has("--finish");
    options.select = commandLine.has("--select");
    options.closeUp = commandLine.has("--icon");
    options.hud = !commandLine.has("--nohud") && !options.closeUp;
    if (const auto path = commandLine.value("--shot")) {
        options.path = *path;
    } else if (const auto iconPath = commandLine.value("--icon")) {
        options.path = *iconPath;
    }
    return options;
}

}  // namespace gull
