#include "Engine/Language/Catalogue.h"

#include "Engine/Language/PluralRule.h"

#include <algorithm>
#include <stdexcept>
#include <string>

// The format is described in gettext's manual, "The Format of GNU MO Files": a header of 32-bit numbers, two
// tables of lengths and offsets, and the texts. The originals are sorted; zero bytes separate plural forms,
// and a context precedes its text and a byte 4.

namespace gull {

namespace {

constexpr std::uint32_t magic = 0x950412de;
constexpr std::size_t entrySize = 8;
constexpr char contextEnd = '\4';
constexpr char formEnd = '\0';

[[noreturn]] void damaged() {
    throw std::invalid_argument("a catalogue is damaged or not a .mo file of this byte order");
}

std::string_view firstForm(std::string_view text) {
    return text.substr(0, text.find(formEnd));
}

}  // namespace

Catalogue::Catalogue(std::string_view bytes) : bytes_(bytes) {
    if (number(0) != magic) damaged();
    count_ = number(8);
    originals_ = number(12);
    translations_ = number(16);
    for (std::uint32_t i = 0; i < count_; ++i) {
        text(translations_, i);
        if (i > 0 && text(originals_, i) <= text(originals_, i - 1)) damaged();
    }
    pluralRule_ = PluralRule::inHeader(find({}, {}));
    PluralRule::form(pluralRule_, 1);
}

std::uint32_t Catalogue::number(std::size_t offset) const {
    if (offset > bytes_.size() || bytes_.size() - offset < 4) damaged();
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes_[offset + i]);
    return value;
}

std::string_view Catalogue::text(std::uint32_t table, std::uint32_t index) const {
    const std::size_t entry = table + std::size_t{index} * entrySize;
    const std::uint32_t length = number(entry);
    const std::uint32_t offset = number(entry + 4);
    if (offset > bytes_.size() || bytes_.size() - offset < length) damaged();
    return bytes_.substr(offset, length);
}

std::string_view Catalogue::find(std::string_view context, std::string_view english,
                                 std::int64_t count) const {
    std::string key;
    if (!context.empty()) key.append(context).append(1, contextEnd);
    key.append(english);
    std::uint32_t first = 0;
    std::uint32_t last = count_;
    while (first < last) {
        const std::uint32_t middle = first + (last - first) / 2;
        if (firstForm(text(originals_, middle)) < key) {
            first = middle + 1;
        } else {
            last = middle;
        }
    }
    if (first == count_ || firstForm(text(originals_, first)) != key) return {};
    std::string_view forms = text(translations_, first);
    if (text(originals_, first).find(formEnd) == std::string_view::npos) return forms;
    for (std::int64_t form = PluralRule::form(pluralRule_, count); form > 0; --form) {
        const std::size_t end = forms.find(formEnd);
        if (end == std::string_view::npos) return {};
        forms.remove_prefix(end + 1);
    }
    return firstForm(forms);
}

std::vector<Catalogue::Entry> Catalogue::entries() const {
    std::vector<Entry> all;
    for (std::uint32_t i = 0; i < count_; ++i) {
        Entry entry;
        std::string_view original = text(originals_, i);
        if (const std::size_t end = original.find(contextEnd); end != std::string_view::npos) {
            entry.context = original.substr(0, end);
            original.remove_prefix(end + 1);
        }
        if (original.empty()) continue;
        entry.english = firstForm(original);
        if (entry.english.size() < original.size()) entry.plural = original.substr(entry.english.size() + 1);
        std::string_view forms = text(translations_, i);
        while (true) {
            entry.forms.push_back(firstForm(forms));
            if (entry.forms.back().size() == forms.size()) break;
            forms.remove_prefix(entry.forms.back().size() + 1);
        }
        all.push_back(std::move(entry));
    }
    return all;
}

}  // namespace gull
