#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace gull {

/// A catalogue as msgfmt compiles it. Keys are the originals with context and plural in the file's own form,
/// "context\4text" and "one\0many"; values their translations, plural forms separated by "\0".
inline std::string moFile(const std::map<std::string, std::string>& messages) {
    std::string head;
    std::string texts;
    const auto number = [&head](std::size_t value) {
        for (int shift = 0; shift < 32; shift += 8) head.push_back(static_cast<char>(value >> shift & 0xff));
    };
    const std::size_t count = messages.size();
    const std::size_t originals = 28;
    const std::size_t translations = originals + 8 * count;
    const std::size_t start = translations + 8 * count;
    number(0x950412de);
    number(0);
    number(count);
    number(originals);
    number(translations);
    number(0);
    number(start);
    const auto table = [&](bool isOriginal) {
        for (const auto& [original, translation] : messages) {
            const std::string& text = isOriginal ? original : translation;
            number(text.size());
            number(start + texts.size());
            texts += text + '\0';
        }
    };
    table(true);
    table(false);
    return head + texts;
}

}  // namespace gull
