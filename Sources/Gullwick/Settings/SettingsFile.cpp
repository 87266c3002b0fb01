#include "Gullwick/Settings/SettingsFile.h"

#include "Engine/Files/FileLock.h"
#include "Engine/Files/SmallFile.h"
#include "Engine/Log/Log.h"

#include <fmt/format.h>
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <utility>

namespace gull {
namespace {

using Json = nlohmann::json;

constexpr int deepest = 64;  // levels; no setting is nested deeper, and writing it would need stack

/// The object in `text`; empty if it holds none.
std::optional<Json> parseObject(const std::string& text) {
    bool isTooDeep = false;
    const auto keep = [&](int depth, Json::parse_event_t, const Json&) {
        isTooDeep = isTooDeep || depth > deepest;
        return !isTooDeep;
    };
    auto document = Json::parse(text, keep, false);
    if (isTooDeep || !document.is_object()) return std::nullopt;
    return document;
}

bool truth(const std::string& word) {
    const std::size_t start = word.find_first_not_of(" \t");
    if (start == std::string::npos) return false;
    const std::size_t sign = word[start] == '+' || word[start] == '-' ? 1 : 0;
    const std::size_t first = word.find_first_not_of('0', start + sign);
    return first != std::string::npos &&
           std::string_view("YyTt123456789").find(word[first]) != std::string_view::npos;
}

bool truth(const Json& value) {
    if (value.is_boolean()) return value.get<bool>();
    if (value.is_number()) return value.get<double>() != 0;
    return value.is_string() && truth(value.get_ref<const std::string&>());
}

}  // namespace

struct SettingsFile::Document {
    Json object = Json::object();

    const Json* find(const std::string& key) const {
        const auto found = object.find(key);
        return found == object.end() ? nullptr : &*found;
    }
};

SettingsFile::SettingsFile(std::filesystem::path file)
    : file_(std::move(file)), document_(std::make_unique<Document>()) {
    if (file_.empty()) return;
    const auto contents = SmallFile::read(file_);
    if (!contents.bytes) {
        if (!contents.isMissing)
            complain(fmt::format("cannot be read ({}); it stays as it is", contents.failure));
    } else if (auto object = parseObject(*contents.bytes)) {
        document_->object = std::move(*object);
    } else {
        complain("is not a JSON object; every setting stands at its default");
    }
}

SettingsFile::~SettingsFile() {
    writeWhatIsOwed();
}

bool SettingsFile::read(const std::string& key, bool otherwise) const {
    const Json* value = document_->find(key);
    if (!value) return otherwise;
    const bool result = truth(*value);
    if (!value->is_boolean() && !value->is_number())
        complain(fmt::format("\"{}\" is neither true nor false; taken as {}", key, result));
    return result;
}

std::int64_t SettingsFile::read(const std::string& key, std::int64_t otherwise, std::int64_t least,
                                std::int64_t most) const {
    const Json* value = document_->find(key);
    if (!value) return otherwise;
    const double real = value->is_number() ? value->get<double>() : std::nan("");
    // Clamped before the conversion, which is undefined for values that do not fit.
    const std::int64_t result = std::isnan(real)                    ? otherwise
                                : real < static_cast<double>(least) ? least
                                : real > static_cast<double>(most)  ? most
                                : value->is_number_float()          ? std::llround(real)
                                                                    : value->get<std::int64_t>();
    if (!value->is_number_integer() || static_cast<double>(result) != real)
        complain(
            fmt::format("\"{}\" is not a whole number from {} to {}; taken as {}", key, least, most, result));
    return result;
}

std::string SettingsFile::read(const std::string& key, const std::string& otherwise) const {
    const Json* value = document_->find(key);
    if (!value) return otherwise;
    if (value->is_string()) return value->get<std::string>();
    complain(fmt::format("\"{}\" is not a text; taken as \"{}\"", key, otherwise));
    return otherwise;
}

void SettingsFile::write(const std::string& key, Value value) {
    if (file_.empty()) return;
    owed_.insert_or_assign(key, std::move(value));
    writeWhatIsOwed();
}

void SettingsFile::writeWhatIsOwed() {
    if (!owed_.empty() && putInFile()) owed_.clear();
}

bool SettingsFile::putInFile() {
    SmallFile::makePrivateFolders(file_);
    const FileLock lock(file_);
    const auto contents = SmallFile::read(file_);
    if (!contents.bytes && !contents.isMissing) {
        complainOnce(fmt::format("is not written: it cannot be read ({})", contents.failure));
        return false;
    }
    const std::string text = contents.bytes.value_or("{}");
    auto object = parseObject(text);
    if (!object) {
        if (const auto kept = SmallFile::setAside(file_, text); !kept) {
            complainOnce(
                fmt::format("is not written: what is damaged in it cannot be set aside ({})", kept.failure));
            return false;
        }
        object = Json::object();
    }
    for (const auto& [key, value] : owed_)
        std::visit([&, &name = key](const auto& plain) { (*object)[name] = plain; }, value);
    const auto written =
        SmallFile::replace(file_, object->dump(4, ' ', false, Json::error_handler_t::replace) + '\n');
    if (!written) complainOnce(fmt::format("is not written ({})", written.failure));
    return static_cast<bool>(written);
}

void SettingsFile::complain(const std::string& what) const {
    Log::say("settings {}: {}", file_.string(), what);
}

void SettingsFile::complainOnce(const std::string& what) {
    if (!std::exchange(hasComplained_, true)) complain(what);
}

}  // namespace gull
