#pragma once

#include "Engine/Raster/Colour.h"
#include "Engine/Raster/Text.h"

namespace gull {

/// The colours of all texts and panels. Other colours come only from black, white and a beach's own look.
namespace Palette {

inline constexpr Colour cream{0.99, 0.96, 0.89, 1};         ///< main text
inline constexpr Colour dim = cream.withAlpha(0.62);        ///< secondary text
inline constexpr Colour coral{1.0, 0.52, 0.40, 1};          ///< warnings, failure
inline constexpr Colour gold{1.0, 0.80, 0.36, 1};           ///< treasure, stars, success
inline constexpr Colour sea{0.36, 0.95, 0.86, 1};           ///< signal, pings
inline constexpr Colour slate{0.62, 0.68, 0.82, 1};         ///< junk signal
inline constexpr Colour panel{0.02, 0.09, 0.11, 0.62};      ///< behind text
inline constexpr Colour panelLine = cream.withAlpha(0.18);  ///< around panels
inline constexpr Colour black{0, 0, 0, 1};
inline constexpr Colour white{1, 1, 1, 1};

}  // namespace Palette

/// `colour` at `opacity` of its own.
constexpr Colour times(const Colour& colour, double opacity) {
    return colour.withAlpha(colour.a * opacity);
}

/// From `a` (t = 0) to `b` (t = 1).
constexpr Colour mixed(const Colour& a, const Colour& b, double t) {
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t, a.a + (b.a - a.a) * t};
}

/// The type of the HUD: monospaced for labels and numbers, italic serif for words, proportional for menus.
namespace Type {

Font mono(double size, FontWeight weight);
/// Digits of equal width, so that a running clock does not jitter.
Font digits(double size, FontWeight weight);
Font italic(double size);
Font sans(double size, FontWeight weight = FontWeight::regular);

}  // namespace Type

}  // namespace gull
