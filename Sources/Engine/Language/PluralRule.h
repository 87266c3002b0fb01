#pragma once

#include <cstdint>
#include <string_view>

namespace gull {

/// What a catalogue's header says of plural forms, "nplurals=2; plural=(n != 1);".
namespace PluralRule {

/// Which of the forms, from 0, `rule` picks for `count` (its sign does not matter). `rule` is an expression
/// of C in n: numbers, ?:, ||, &&, comparisons, + - * / %, !, and parentheses. Throws std::invalid_argument
/// for anything else.
std::int64_t form(std::string_view rule, std::int64_t count);

/// The expression within a catalogue's header; without one English's, "n != 1".
std::string_view inHeader(std::string_view header);

}  // namespace PluralRule

}  // namespace gull
