#pragma once

#include "Engine/Language/Message.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gull {

class Catalogue;

/// A language that the program speaks. English needs no catalogue; the others are compiled from
/// Translations/*.po into the program. Nothing depends on the locales that the system has.
///
/// A cheap value: two are equal when they are the same language. What a catalogue lacks comes out in English.
///
///     language.tr("PINGS {}", pings)
///     language.trc("menu", "Game")
///     language.trn("{} beach left", "{} beaches left", count, count)
///
/// The texts are literals: xgettext finds them by these functions' names. How to add one, or a language,
/// stands in Docs/architecture.md.
class Language {
  public:
    /// Looks an environment variable up: its value, or null when it is not set. std::getenv is one.
    using Environment = std::function<const char*(const char*)>;

    /// English.
    Language() = default;
    /// `catalogue` is owned by the caller and must outlive the language. `code`: ISO 639, with a country
    /// where that matters: "de", "pt_BR".
    Language(std::string code, const Catalogue& catalogue) : code_(std::move(code)), catalogue_(&catalogue) {}

    /// All there are, English first, the others by their codes.
    static const std::vector<Language>& all();
    static std::optional<Language> find(std::string_view code);
    /// The language that the environment asks for, by gettext's rules: the locale is the first of LC_ALL,
    /// LC_MESSAGES and LANG that is set and not empty. Where it is "C" or "POSIX", English. Otherwise the
    /// first of the colon-separated LANGUAGE that there is, then the locale's own language, then English.
    /// Where no locale is set at all, LANGUAGE counts too.
    static Language preferred(const Environment& environment);

    const std::string& code() const { return code_; }
    /// In that language itself: "Deutsch".
    std::string ownName() const { return trc("this language, in itself", "English"); }

    template <typename... Values>
    std::string tr(SourceText<sizeof...(Values)> english, const Values&... values) const {
        return tr(Message{.english = std::string(english.text), .values = {Message::Value(values)...}});
    }
    /// With a context that tells it from the same English in another meaning.
    template <typename... Values>
    std::string trc(SourceText<0> context, SourceText<sizeof...(Values)> english,
                    const Values&... values) const {
        return tr(Message{.english = std::string(english.text),
                          .context = std::string(context.text),
                          .values = {Message::Value(values)...}});
    }
    /// In the form that the language has for `count`. The count itself is a value like others: pass it
    /// again where it is shown.
    template <typename Count, typename... Values>
    std::string trn(SourceText<sizeof...(Values)> singular, SourceText<sizeof...(Values)> plural, Count count,
                    const Values&... values) const {
        return tr(Message{.english = std::string(singular.text),
                          .plural = std::string(plural.text),
                          .count = count,
                          .values = {Message::Value(values)...}});
    }
    std::string tr(const Message& message) const;
    /// Of a text marked with translatable() where it is written.
    std::string translated(std::string_view english) const { return tr(marked(english)); }

    bool operator==(const Language& other) const { return catalogue_ == other.catalogue_; }

  private:
    std::string code_ = "en";
    const Catalogue* catalogue_ = nullptr;
};

}  // namespace gull
