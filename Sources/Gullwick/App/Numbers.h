#pragma once

#include "GullCore/Beach.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace gull {

/// A whole text as a decimal integer with an optional sign; empty if it is anything else or does not fit.
std::optional<std::int64_t> parseInteger(std::string_view text);
std::optional<std::uint64_t> parseUnsigned(std::string_view text);
/// A whole text as a finite number ("1.5", "-2e3").
std::optional<double> parseNumber(std::string_view text);
/// The pieces between separators, empty ones left out. Borrows from `text`.
std::vector<std::string_view> split(std::string_view text, char separator);
/// A place written "x,y". Pieces that are not numbers are skipped, and so is anything after two. Empty if
/// there are fewer.
std::optional<PlotPoint> parsePoint(std::string_view text);

}  // namespace gull
