#include "GullCore/Json.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <system_error>

namespace gull::Json {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;  // for writing: keeps keys in the given order

/// The document; empty if `text` is not UTF-8 JSON.
std::optional<json> parse(std::string_view text) {
    // The parser takes a NUL for the end of its input.
    if (text.find('\0') != std::string_view::npos) return std::nullopt;
    auto document = json::parse(text.begin(), text.end(), nullptr, false);
    if (document.is_discarded()) return std::nullopt;
    return document;
}

const json* member(const json& object, const char* key) {
    if (!object.is_object()) return nullptr;
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

std::optional<double> number(const json* value) {
    if (!value || !value->is_number()) return std::nullopt;
    return value->get<double>();
}

/// A 64-bit integer. Plain digits are read exactly. A number with a point or an exponent arrives as a double,
/// and so do digits beyond 64 bits, which the range check then refuses.
std::optional<std::int64_t> integer(const json& value) {
    if (value.is_number_unsigned()) {
        const auto whole = value.get<std::uint64_t>();
        if (whole > static_cast<std::uint64_t>(INT64_MAX)) return std::nullopt;
        return static_cast<std::int64_t>(whole);
    }
    if (value.is_number_integer()) return value.get<std::int64_t>();
    if (!value.is_number_float()) return std::nullopt;
    const auto real = value.get<double>();
    if (std::trunc(real) != real || std::fabs(real) >= 0x1p63) return std::nullopt;
    return static_cast<std::int64_t>(real);
}

/// ASCII digits after at most one sign, and nothing else.
std::optional<std::int64_t> decimal(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return value;
}

using ByBeach = std::map<std::int64_t, std::int64_t>;

std::optional<ByBeach> byBeach(const json* object) {
    if (!object || !object->is_object()) return std::nullopt;
    ByBeach result;
    for (const auto& entry : object->items()) {
        const auto beach = decimal(entry.key());
        const auto value = integer(entry.value());
        if (!beach || !value) return std::nullopt;
        result.insert_or_assign(*beach, *value);
    }
    return result;
}

ordered_json form(const ByBeach& values) {
    ordered_json::object_t object;
    for (const auto& [beach, value] : values) object.emplace_back(std::to_string(beach), value);
    return object;
}

ordered_json form(const PlotPoint& point) {
    return {{"x", point.x}, {"y", point.y}};
}

std::optional<PlotPoint> point(const json* object) {
    if (!object) return std::nullopt;
    const auto x = number(member(*object, "x"));
    const auto y = number(member(*object, "y"));
    if (!x || !y) return std::nullopt;
    return PlotPoint{*x, *y};
}

}  // namespace

std::string write(const PlotPoint& point) {
    return form(point).dump();
}

std::optional<PlotPoint> readPlotPoint(std::string_view text) {
    const auto document = parse(text);
    return document ? point(&*document) : std::nullopt;
}

std::string write(const BuriedItem& item) {
    const ordered_json object{
        {"id", item.id}, {"kind", rawValue(item.kind)}, {"at", form(item.at)}, {"depth", item.depth}};
    return object.dump();
}

std::optional<BuriedItem> readBuriedItem(std::string_view text) {
    const auto document = parse(text);
    if (!document) return std::nullopt;
    const auto* idNumber = member(*document, "id");
    const auto* kindText = member(*document, "kind");
    if (!idNumber || !kindText || !kindText->is_string()) return std::nullopt;
    const auto id = integer(*idNumber);
    const auto kind = itemKind(kindText->get_ref<const std::string&>());
    const auto at = point(member(*document, "at"));
    const auto depth = number(member(*document, "depth"));
    if (!id || !kind || !at || !depth) return std::nullopt;
    return BuriedItem{*id, *kind, *at, *depth};
}

std::string write(const CampaignProgress& progress) {
    const ordered_json object{{"stars", form(progress.stars)}, {"bestHaul", form(progress.bestHaul)}};
    return object.dump();
}

std::optional<CampaignProgress> readProgress(std::string_view text) {
    const auto document = parse(text);
    if (!document) return std::nullopt;
    const auto stars = byBeach(member(*document, "stars"));
    const auto bestHaul = byBeach(member(*document, "bestHaul"));
    if (!stars || !bestHaul) return std::nullopt;
    return CampaignProgress{*stars, *bestHaul};
}

}  // namespace gull::Json
