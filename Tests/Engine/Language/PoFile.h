#pragma once

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace gull {

/// One message of a .po or .pot file.
struct PoMessage {
    std::vector<std::string> sources;  ///< files it comes from: "Sources/GullCore/Beach.cpp"
    std::string context;
    std::string english;
    std::string plural;
    std::vector<std::string> translations;  ///< one, or one for each plural form

    /// In the form of a compiled catalogue.
    std::string key() const {
        std::string key = context.empty() ? english : context + '\4' + english;
        if (!plural.empty()) key += '\0' + plural;
        return key;
    }
};

/// The text between the quotes of a line.
inline std::string inQuotes(const std::string& line) {
    std::string text;
    const std::size_t last = line.rfind('"');
    for (std::size_t i = line.find('"') + 1; i < last; ++i) {
        if (line[i] != '\\') {
            text += line[i];
        } else {
            ++i;
            text += line[i] == 'n' ? '\n' : line[i];
        }
    }
    return text;
}

/// The messages of a file, without its header. Obsolete ones ("#~") are left out.
inline std::vector<PoMessage> readPo(const std::string& path) {
    std::ifstream file(path);
    EXPECT_TRUE(file.is_open()) << path;
    std::vector<PoMessage> messages;
    PoMessage now;
    std::string* text = nullptr;
    const auto finish = [&] {
        if (!now.english.empty()) messages.push_back(now);
        now = {};
        text = nullptr;
    };
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string first;
        words >> first;
        if (first.empty()) {
            finish();
            continue;
        }
        if (first == "#:") {
            for (std::string source; words >> source;) now.sources.push_back(source);
        } else if (first == "msgctxt") {
            text = &now.context;
        } else if (first == "msgid") {
            text = &now.english;
        } else if (first == "msgid_plural") {
            text = &now.plural;
        } else if (first.starts_with("msgstr")) {
            text = &now.translations.emplace_back();
        }
        if (first.front() != '#' && text != nullptr) *text += inQuotes(line);
    }
    finish();
    return messages;
}

/// The template of the catalogues, made from the sources by cmake/texts.sh. Tests run in the root of the
/// checkout.
inline std::vector<PoMessage> textsOfTheSources() {
    const TemporaryFolder folder;
    const std::string path = (folder.path() / "gullwick.pot").string();
    EXPECT_EQ(std::system(("cmake/texts.sh template " + path).c_str()), 0);
    return readPo(path);
}

/// The placeholders in a text with their arguments, sorted: "{} of {:02}" has "0" and "1:02".
inline std::vector<std::string> placeholders(const std::string& text) {
    std::vector<std::string> found;
    int next = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 2, "{{") == 0 || text.compare(i, 2, "}}") == 0) {
            ++i;
        } else if (text[i] == '{') {
            const std::size_t end = std::min(text.find('}', i), text.size());
            if (end == text.size()) found.push_back("a brace that is never closed");
            const std::string inside = text.substr(i + 1, end - i - 1);
            const std::string index = inside.substr(0, inside.find(':'));
            const std::string form = inside.substr(index.size());
            found.push_back((index.empty() ? std::to_string(next++) : index) + form);
            i = end;
        } else if (text[i] == '}') {
            found.push_back("a brace that closes nothing");
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace gull
