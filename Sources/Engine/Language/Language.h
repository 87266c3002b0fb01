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
/// Translations/*.po into the program. Nothing depends on the system's locales.
///
/// A cheap value; two are equal if they are the same language. A text missing in the catalogue comes out in
/// English.
///
///     language.tr("PINGS {}", pings)
///     language.trc("menu", "Game")
///     language.trn("{} beach left", "{} beaches left", count, count)
///
/// The texts are literals: xgettext finds them by these functions' names. Docs/architecture.md says how to
/// add a text or a language.
class Language {
  public:
    /// Looks up an environment variable: its value, or null if it is not set. std::getenv is one.
    using Environment = std::function<const char*(const char*)>;

    /// English.
    Language() = default;
    /// `catalogue` is owned by the caller and must outlive the language. `code`: ISO 639, with a country if
    /// that matters: "de", "pt_BR".
    Language(std::string code, const Catalogue& catalogue) : code_(std::move(code)), catalogue_(&catalogue) {}

    /// All languages, English first, the others sorted by code.
    static const std::vector<Language>& all();
    static std::optional<Language> find(std::string_view code);
    /// The language that the environment asks for, by gettext's rules. The locale is the first of LC_ALL,
    /// LC_MESSAGES and LANG that is set and not empty. If it is "C" or "POSIX": English. Otherwise the first
    /// available one of the colon-separated LANGUAGE, then the locale's own language, then English. If no
    /// locale is set at all, LANGUAGE still counts.
    static Language preferred(const Environment& environment);

    const std::string& code() const { return code_; }
    /// The language's name in that language: "Deutsch".
    std::string ownName() const { return trc("this language, in itself", "English"); }

    template <typename... Values>
    std::string tr(SourceText<sizeof...(Values)> english, const Values&... values) const {
        return tr(Message{.english = std::string(english.text), .values = {Message::Value(values)...}});
    }
    /// With a context that distinguishes it from the same English in another meaning.
    template <typename... Values>
    std::string trc(SourceText<0> context, SourceText<sizeof...(Values)> english,
                    const Values&... values) const {
        return tr(Message{.english = std::string(english.text),
                          .context = std::string(context.text),
                          .values = {Message::Value(values)...}});
    }
    /// In the plural form that the language has for `count`. The count itself is a value like the others:
    /// pass it again where it is shown.
    template <typename Count, typename... Values>
    std::string trn(SourceText<sizeof...(Values)> singular, SourceText<sizeof...(Values)> plural, Count count,
                    const Values&... values) const {
        return tr(Message{.english = std::string(singular.text),
                          .plural = std::string(plural.text),
                          .count = count,
                          .values = {Message::Value(values)...}});
    }
    std::string tr(const Message& message) const;
    /// The translation of a text marked with translatable() where it is written.
    std::string translated(std::string_view english) const { return tr(marked(english)); }

    bool operator==(const Language& other) const { return catalogue_ == other.catalogue_; }

  private:
    std::string code_ = "en";
    const Catalogue* catalogue_ = nullptr;
};

}  // namespace gull
