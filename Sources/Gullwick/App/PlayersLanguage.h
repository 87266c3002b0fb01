#pragma once

#include "Engine/Language/Language.h"

#include <string>

namespace gull {

/// The language that the player reads: the chosen one, or, when `chosen` is empty, what the environment asks
/// for (Language::preferred). Where the program does not speak it, or no font here shows it, the next best;
/// standard error says so.
Language playersLanguage(const std::string& chosen);

}  // namespace gull
