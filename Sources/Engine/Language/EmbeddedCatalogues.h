#pragma once

#include <span>
#include <string_view>

namespace gull {

/// A catalogue that was compiled into the program.
struct EmbeddedCatalogue {
    std::string_view code;   ///< of the language: "de"
    std::string_view bytes;  ///< a .mo file
};

/// By their codes. The build writes the source of this function from Translations/*.po.
std::span<const EmbeddedCatalogue> embeddedCatalogues();

}  // namespace gull
