#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace gull {

/// Why no scene can be dressed for beach `number`; nothing when one can. Numbers beyond the eighth beach can
/// be: they are played as the eighth and dressed by themselves.
std::optional<std::string> beachProblem(std::int64_t number);

}  // namespace gull
