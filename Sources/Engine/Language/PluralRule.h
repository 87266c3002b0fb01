#pragma once

#include <cstdint>
#include <string_view>

namespace gull {

/// The plural forms of a catalogue's header, "nplurals=2; plural=(n != 1);".
namespace PluralRule {

/// The index of the form, from 0, that `rule` selects for `count` (its sign does not matter). `rule` is a C
/// expression in n: numbers, ?:, ||, &&, comparisons, + - * / %, !, and parentheses. Throws
/// std::invalid_argument for anything else.
std::int64_t form(std::string_view rule, std::int64_t count);

/// The expression in a catalogue's header; without one, English's: "n != 1".
std::string_view inHeader(std::string_view header);

}  // namespace PluralRule

}  // namespace gull
