#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace gull {

/// Marks an English text for the catalogues where it is written but not yet shown, and returns it unchanged.
/// The code that shows it calls Language::translated().
constexpr std::string_view translatable(std::string_view english) {
    return english;
}
/// With a context, which the code that shows it must name, too.
constexpr std::string_view translatable(std::string_view /*context*/, std::string_view english) {
    return english;
}

/// An English text as written in the source. Checked at compile time: it must be a constant, with one
/// placeholder for each of `values`.
template <std::size_t values>
struct SourceText {
    std::string_view text;

    template <std::size_t size>
    consteval SourceText(const char (&literal)[size]) : text(literal, size - 1) {
        std::size_t placeholders = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] != '{') continue;
            if (i + 1 < text.size() && text[i + 1] == '{')
                ++i;
            else
                ++placeholders;
        }
        if (placeholders != values) throw "one placeholder {} for each value";
    }
};

/// Something to say, not yet in any language: an English text and the values of its placeholders. The English
/// text is the key to its translations in the catalogues, and the fallback.
///
/// Placeholders are fmt's: "{}", "{:02}", and "{1}" in translations that need another order. Made by
/// message(), or internally by Language's functions.
struct Message {
    struct Value;

    std::string english;
    std::string context = {};  ///< distinguishes equal English texts with different meanings; usually empty
    std::string plural = {};   ///< English for counts other than 1; empty if nothing is counted
    std::int64_t count = 0;    ///< selects the plural form
    std::vector<Value> values;

    bool operator==(const Message& other) const;
};

/// The value of a placeholder. Texts are used as they are; messages are translated, too.
struct Message::Value {
    std::variant<std::int64_t, double, std::string, Message> value;

    template <std::integral Number>
    Value(Number number) : value(static_cast<std::int64_t>(number)) {}
    Value(double number) : value(number) {}
    Value(std::string text) : value(std::move(text)) {}
    Value(std::string_view text) : value(std::string(text)) {}
    Value(const char* text) : value(std::string(text)) {}
    Value(Message message) : value(std::move(message)) {}
    bool operator==(const Value&) const = default;
};

inline bool Message::operator==(const Message& other) const {
    return english == other.english && context == other.context && plural == other.plural &&
           count == other.count && values == other.values;
}

/// `english` is a literal; the catalogue tools find it by this function's name.
template <typename... Values>
Message message(SourceText<sizeof...(Values)> english, const Values&... values) {
    return {.english = std::string(english.text), .values = {Message::Value(values)...}};
}

/// A text that is marked with translatable() elsewhere.
inline Message marked(std::string_view english) {
    return {.english = std::string(english), .values = {}};
}
inline Message marked(std::string_view context, std::string_view english) {
    return {.english = std::string(english), .context = std::string(context), .values = {}};
}

}  // namespace gull
