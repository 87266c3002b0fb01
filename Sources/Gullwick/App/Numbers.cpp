#include "Gullwick/App/Numbers.h"

#include <charconv>
#include <cmath>

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

}  // namespace gull
