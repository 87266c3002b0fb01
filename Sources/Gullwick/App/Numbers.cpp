#include "Gullwick/App/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace gull {

namespace {

/// from_chars takes a minus but no plus.
std::optional<std::string_view> withoutPlus(std::string_view text) {
    if (text.empty() || text[0] != '+') return text;
    text.remove_prefix(1);
    if (text.empty() || text[0] == '-') return std::nullopt;
    return text;
}

template <typename T>
std::optional<T> parseWhole(std::string_view text) {
    const auto digits = withoutPlus(text);
    if (!digits) return std::nullopt;
    T value{};
    const char* end = digits->data() + digits->size();
    const auto [stopped, error] = std::from_chars(digits->data(), end, value);
    if (error != std::errc() || stopped != end) return std::nullopt;
    return value;
}

}  // namespace

std::optional<std::int64_t> parseInteger(std::string_view text) {
    return parseWhole<std::int64_t>(text);
}
std::optional<std::uint64_t> parseUnsigned(std::string_view text) {
    return parseWhole<std::uint64_t>(text);
}

std::optional<double> parseNumber(std::string_view text) {
    const auto value = parseWhole<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0) pieces.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pieces;
}

std::optional<PlotPoint> parsePoint(std::string_view text) {
    std::vector<double> numbers;
    for (const std::string_view piece : split(text, ',')) {
        if (const auto number = parseNumber(piece)) numbers.push_back(*number);
    }
    if (numbers.size() < 2) return std::nullopt;
    return PlotPoint{numbers[0], numbers[1]};
}

}  // namespace gull
