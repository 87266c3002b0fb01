#pragma once

#include <span>
#include <string_view>

namespace gull {

/// A catalogue compiled into the program.
struct EmbeddedCatalogue {
    std::string_view code;   ///< of the language: "de"
    std::string_view bytes;  ///< a .mo file
};

/// Sorted by code. The build generates this function's source from Translations/*.po.
std::span<const EmbeddedCatalogue> embeddedCatalogues();

}  // namespace gull
