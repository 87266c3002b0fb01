#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace gull {

/// The translations of one language, read in place from the .mo file that msgfmt compiles.
class Catalogue {
  public:
    /// Borrows `bytes`. Throws std::invalid_argument if they are not a valid .mo file.
    explicit Catalogue(std::string_view bytes);

    /// The translation, borrowed; empty if there is none. `count` selects the plural form of a message that
    /// has several.
    std::string_view find(std::string_view context, std::string_view english, std::int64_t count = 0) const;

    struct Entry {
        std::string_view context;
        std::string_view english;
        std::string_view plural;              ///< empty if there is none
        std::vector<std::string_view> forms;  ///< one, or as many as the language has plural forms
    };
    /// Every message but the header, for tests.
    std::vector<Entry> entries() const;

  private:
    std::uint32_t number(std::size_t offset) const;
    /// Text `index` of the table that begins at `table`.
    std::string_view text(std::uint32_t table, std::uint32_t index) const;

    std::string_view bytes_;
    std::uint32_t count_ = 0;
    std::uint32_t originals_ = 0;
    std::uint32_t translations_ = 0;
    std::string_view pluralRule_;
};

}  // namespace gull
