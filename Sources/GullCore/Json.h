#pragma once

#include "GullCore/Beach.h"
#include "GullCore/Progress.h"

#include <optional>
#include <string>
#include <string_view>

namespace gull {

/// The JSON forms of the rules' records. Reading is all or nothing: a missing key, an unknown kind, a value
/// of the wrong type or text that is not UTF-8 JSON gives an empty optional. Other keys are ignored, and the
/// order of keys is irrelevant. Integers may be written as 3, 3.0 or 3e0; beyond 64 bits they are refused.
namespace Json {

/// {"x":0.25,"y":0.5}
std::string write(const PlotPoint& point);
std::optional<PlotPoint> readPlotPoint(std::string_view text);

/// {"id":3,"kind":"ring","at":{"x":0.41,"y":0.62},"depth":0.12}
std::string write(const BuriedItem& item);
std::optional<BuriedItem> readBuriedItem(std::string_view text);

/// {"stars":{"1":3,"2":1},"bestHaul":{"1":220,"2":250}}; beach numbers are decimal member names, a sign and
/// leading zeros allowed.
std::string write(const CampaignProgress& progress);
std::optional<CampaignProgress> readProgress(std::string_view text);

}  // namespace Json

}  // namespace gull
