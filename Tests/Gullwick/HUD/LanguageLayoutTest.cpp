#include "Engine/Language/Catalogue.h"
#include "Engine/Language/MoFile.h"
#include "Engine/Language/PoFile.h"
#include "Engine/Raster/Text.h"
#include "Gullwick/HUD/HudFixture.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace gull {
namespace {

bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

/// A Cyrillic letter for a Latin one, in the same case.
std::string cyrillic(char letter) {
    const bool isUpper = letter < 'a';
    const int code = (isUpper ? 0x410 : 0x430) + (isUpper ? letter - 'A' : letter - 'a');
    return {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
}

/// English in letters that no other text has, each word a third longer. Placeholders and single letters,
/// which are keys, stay.
std::string stretched(const std::string& english) {
    std::string text;
    for (std::size_t i = 0; i < english.size();) {
        if (english[i] == '{') {
            const std::size_t end = english.find('}', i) + 1;
            text += english.substr(i, end - i);
            i = end;
            continue;
        }
        std::size_t end = i;
        while (end < english.size() && isLetter(english[end])) ++end;
        const std::size_t length = end - i;
        for (std::size_t k = i; k < end; ++k)
            text += length > 1 ? cyrillic(english[k]) : english.substr(k, 1);
        for (std::size_t k = 0; length > 1 && k < (length + 2) / 3; ++k) text += cyrillic(english[end - 1]);
        if (length == 0) text += english[end++];
        i = end;
    }
    return text;
}

/// A text with its Chinese characters and kana replaced by others that also allow line breaks and are a
/// little wider: the tests need no Japanese font.
std::string withStandIns(const std::string& text) {
    static constexpr std::array<std::string_view, 2> standIns{"🀰", "🁢"};  // 1.36 and 0.82 em
    std::string result;
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        // U+3000 and above: three bytes, the first at least E3.
        if (length == 3 && lead >= 0xE3) {
            result += standIns[count++ % 2];
        } else {
            result += text.substr(i, length);
        }
        i += length;
    }
    return result;
}

/// The longest part of a text between placeholders, in upper case.
std::string heart(const std::string& text) {
    std::string best;
    std::string part;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (i < text.size() && text[i] != '{') {
            part += text[i];
            continue;
        }
        if (part.size() > best.size()) best = part;
        part.clear();
        while (i < text.size() && text[i] != '}') ++i;
    }
    return upperCase(best);
}

struct LanguageLayoutTest : HudFixture {
    std::string bytes;
    std::optional<Catalogue> catalogue;

    /// From here on all states are in this language.
    void speak(const std::string& code, const std::map<std::string, std::string>& messages) {
        bytes = moFile(messages);
        catalogue.emplace(bytes);
        language = Language(code, *catalogue);
        seen.clear();
    }
    void speak(const std::string& code) {
        std::map<std::string, std::string> messages;
        for (const PoMessage& message : readPo("Translations/" + code + ".po")) {
            std::string forms;
            for (const std::string& form : message.translations)
                forms +=
                    (&form == &message.translations.front() ? "" : std::string(1, '\0')) + withStandIns(form);
            messages[message.key()] = forms;
        }
        speak(code, messages);
    }
    void speakStretched() {
        std::map<std::string, std::string> messages{{"", "Plural-Forms: nplurals=1; plural=0;\n"}};
        for (const PoMessage& message : texts()) messages[message.key()] = stretched(message.english);
        speak("stretched", messages);
    }

    static const std::vector<PoMessage>& texts() {
        static const std::vector<PoMessage> list = textsOfTheSources();
        return list;
    }
    static bool comesFrom(const PoMessage& message, const char* folder) {
        return std::any_of(message.sources.begin(), message.sources.end(),
                           [&](const std::string& source) { return source.starts_with(folder); });
    }
    static bool isToast(const PoMessage& message) {
        const bool isMenu = comesFrom(message, "Sources/Gullwick/App/Commands.cpp");
        return comesFrom(message, "Sources/Gullwick/Game/") ||
               comesFrom(message, "Sources/Gullwick/HUD/HudState.cpp") ||
               (comesFrom(message, "Sources/Gullwick/App/") && !isMenu);
    }

    std::string filledIn(const PoMessage& message) const {
        Message filled{
            .english = message.english, .context = message.context, .plural = message.plural, .values = {}};
        const std::vector<std::string> wanted = placeholders(message.english);
        for (const std::string& each : wanted) {
            if (each.ends_with('f')) {
                filled.values.emplace_back(5.0);
            } else if (message.english.find("stick") != std::string::npos) {
                filled.values.emplace_back(Controls::label("bottom button"));
            } else if (wanted.size() > 1 || each.find(':') != each.npos) {
                filled.values.emplace_back(8);
            } else {
                filled.values.emplace_back(marked("Treasure chest"));
            }
        }
        return language.tr(filled);
    }

    /// Every toast there is, in a window of the fixture's size.
    void expectToastsHaveRoom() {
        HudState state = playing(2);
        state.pings = 99;
        int toasts = 0;
        for (const PoMessage& message : texts()) {
            if (!isToast(message)) continue;
            ++toasts;
            state.toast = filledIn(message);
            const Drawing drawing = draw(state);
            expectRoom(drawing, "toast.0", {"toast"});
            EXPECT_LT(rectOf(drawing, "toast").height, 72)
                << language.code() << ", more than three lines: " << *state.toast;
        }
        for (const ItemKind kind : junkKinds()) {
            state.toast = language.translated(name(kind));
            expectRoom(draw(state), "toast.0", {"toast"});
        }
        EXPECT_GT(toasts, 10);
    }
};

TEST_F(LanguageLayoutTest, AllTextHasRoomInEveryLanguage) {
    for (const Language& each : Language::all()) {
        if (each == Language()) continue;
        speak(each.code());
        for (const auto& [w, h] : {std::pair{860.0, 560.0}, {1240.0, 800.0}}) {
            width = w;
            height = h;
            expectAllTextHasRoom();
            expectToastsHaveRoom();
        }
    }
}

TEST_F(LanguageLayoutTest, AllTextHasRoomAThirdLonger) {
    EXPECT_EQ(stretched("R  replay {} of {:02}!"), "R  сдплашшш {} оее {:02}!") << "what this test stands on";
    speakStretched();
    for (const auto& [w, h] : {std::pair{860.0, 560.0}, {1240.0, 800.0}}) {
        width = w;
        height = h;
        expectAllTextHasRoom();
        expectToastsHaveRoom();
    }
}

TEST_F(LanguageLayoutTest, EveryTextGoesThroughTheCatalogueAndIsLookedAt) {
    speakStretched();
    expectAllTextHasRoom();
    expectToastsHaveRoom();
    for (const std::string& text : seen) {
        if (text == "GULLWICK" || text.find("libepoxy") != text.npos) continue;  // names
        for (std::size_t i = 0; i + 1 < text.size(); ++i) {
            EXPECT_FALSE(isLetter(text[i]) && isLetter(text[i + 1]))
                << "\"" << text << "\" is shown without Language::tr()";
        }
    }
    for (const PoMessage& message : texts()) {
        if (comesFrom(message, "Sources/Gullwick/HUD/Command.cpp")) continue;  // the menus' keys
        const bool isShownHere = comesFrom(message, "Sources/Gullwick/HUD/") ||
                                 comesFrom(message, "Sources/GullCore/") || isToast(message);
        if (!isShownHere) continue;
        const std::string words = heart(stretched(message.english));
        EXPECT_TRUE(
            std::any_of(seen.begin(), seen.end(),
                        [&](const std::string& text) { return upperCase(text).find(words) != text.npos; }))
            << "no state of HudFixture shows \"" << message.english << "\"";
    }
}

}  // namespace
}  // namespace gull
