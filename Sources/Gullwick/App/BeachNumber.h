#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace gull {

/// The reason why no scene can be dressed for beach `number`; empty if one can. Numbers above eight are
/// valid: they are played as the eighth beach, with dressing of their own.
std::optional<std::string> beachProblem(std::int64_t number);

}  // namespace gull
