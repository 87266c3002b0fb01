#include "Gullwick/App/Environment.h"

#include "Gullwick/App/Numbers.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>

namespace gull {

std::optional<std::string> environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::optional<double> requestedScale() {
    const auto text = environmentVariable("GULLWICK_SCALE");
    if (!text) return std::nullopt;
    const auto scale = parseNumber(*text);
    if (scale && *scale >= 0.5 && *scale <= 4) return scale;
    fmt::print(stderr, "gullwick: GULLWICK_SCALE takes a number from 0.5 to 4; \"{}\" is ignored\n", *text);
    return std::nullopt;
}

}  // namespace gull
