#include "Engine/Language/Language.h"

#include "Engine/Language/Catalogue.h"
#include "Engine/Language/EmbeddedCatalogues.h"

#include <fmt/args.h>
#include <fmt/format.h>

#include <algorithm>
#include <deque>

namespace gull {

namespace {

std::string formatted(std::string_view words, const Language& language,
                      const std::vector<Message::Value>& values) {
    fmt::dynamic_format_arg_store<fmt::format_context> store;
    for (const Message::Value& each : values) {
        if (const auto* inner = std::get_if<Message>(&each.value)) {
            store.push_back(language.tr(*inner));
        } else {
            std::visit(
                [&]<typename Value>(const Value& value) {
                    if constexpr (!std::is_same_v<Value, Message>) store.push_back(value);
                },
                each.value);
        }
    }
    return fmt::vformat(fmt::string_view(words.data(), words.size()), store);
}

std::string_view variable(const Language::Environment& environment, const char* name) {
    const char* value = environment(name);
    return value != nullptr ? value : "";
}

bool isPlain(std::string_view locale) {
    return locale == "C" || locale == "POSIX";
}

/// "de_AT.UTF-8@euro" means "de_AT", or else "de".
std::optional<Language> forLocale(std::string_view locale) {
    const std::string_view withCountry = locale.substr(0, locale.find_first_of(".@"));
    if (auto found = Language::find(withCountry)) return found;
    return Language::find(withCountry.substr(0, withCountry.find('_')));
}

}  // namespace

const std::vector<Language>& Language::all() {
    static const std::deque<Catalogue> catalogues = [] {
        std::deque<Catalogue> list;
        for (const EmbeddedCatalogue& each : embeddedCatalogues()) list.emplace_back(each.bytes);
        return list;
    }();
    static const std::vector<Language> languages = [] {
        std::vector<Language> list{Language()};
        for (std::size_t i = 0; i < catalogues.size(); ++i)
            list.emplace_back(std::string(embeddedCatalogues()[i].code), catalogues[i]);
        return list;
    }();
    return languages;
}

std::optional<Language> Language::find(std::string_view code) {
    const auto found =
        std::find_if(all().begin(), all().end(), [&](const Language& each) { return each.code_ == code; });
    return found == all().end() ? std::nullopt : std::optional(*found);
}

Language Language::preferred(const Environment& environment) {
    std::string_view locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (locale.empty()) locale = variable(environment, name);
    }
    if (isPlain(locale)) return {};
    std::string_view wishes = variable(environment, "LANGUAGE");
    while (!wishes.empty()) {
        const std::string_view wish = wishes.substr(0, wishes.find(':'));
        if (isPlain(wish)) return {};
        if (const auto found = forLocale(wish)) return *found;
        wishes.remove_prefix(std::min(wish.size() + 1, wishes.size()));
    }
    return forLocale(locale).value_or(Language());
}

std::string Language::tr(const Message& message) const {
    std::string_view english = message.english;
    if (!message.plural.empty() && message.count != 1) english = message.plural;
    if (catalogue_ != nullptr && !english.empty()) {  // an empty text is the key of the header
        const std::string_view own = catalogue_->find(message.context, message.english, message.count);
        try {
            if (!own.empty()) return formatted(own, *this, message.values);
        } catch (const fmt::format_error&) {
            // A translator's slip, which the tests look for, must not end the game.
        }
    }
    return formatted(english, *this, message.values);
}

}  // namespace gull
