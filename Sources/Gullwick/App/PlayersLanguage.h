#pragma once

#include "Engine/Language/Language.h"

#include <string>

namespace gull {

/// The language for the player: the chosen one or, if `chosen` is empty, the one that the environment asks
/// for (Language::preferred). If the program does not speak it, or no font can show it, the next best, with a
/// message on standard error.
Language playersLanguage(const std::string& chosen);

}  // namespace gull
