#pragma once

#include "Engine/Raster/Canvas.h"

#include <string>
#include <string_view>
#include <vector>

namespace gull {

enum class FontDesign { monospaced, serif, proportional };
enum class FontWeight { regular, semibold, bold };
enum class TextAlign { left, centre, right };

/// A member of the program's font family, found through fontconfig: JetBrains Mono, Vollkorn, Inter, each
/// with fallbacks. `family` overrides the design by name ("Times New Roman").
struct Font {
    double size = 13;  ///< points
    FontWeight weight = FontWeight::regular;
    FontDesign design = FontDesign::monospaced;
    bool italic = false;
    bool tabularDigits = false;  ///< digits of equal width
    std::string family = {};
    bool operator==(const Font&) const = default;
};

struct TextStyle {
    Font font = {};
    double tracking = 0;  ///< extra space between characters, points; not after the last of a line
    TextAlign align = TextAlign::left;
    double maxWidth = 0;  ///< wraps beyond this; 0: one line per line break
    int maxLines = 0;     ///< 0: no limit; more text is cut with an ellipsis
    bool operator==(const TextStyle&) const = default;
};

struct TextSize {
    double width = 0;
    double height = 0;
    double baseline = 0;  ///< of the first line, from the top
};

/// Measures and draws text. The measurements are those of unhinted outlines, independent of the canvas's
/// scale. Recent layouts are kept, so the same text costs little the second time.
TextSize measureText(std::string_view text, const TextStyle& style);
/// Draws with the top-left corner of the measured box at (x, y), upright and with the same corner in a
/// flipped canvas too. Baselines are rounded to whole pixels.
void drawText(Canvas& canvas, std::string_view text, const TextStyle& style, const Colour& colour, double x,
              double y);
/// In upper case, by Unicode's rules for all languages: "ß" becomes "SS".
std::string upperCase(std::string_view text);
/// True when fontconfig finds any font at all.
bool anyFontInstalled();
/// True when there is a glyph for every character of `text`, in the font itself or a fallback.
bool canShow(std::string_view text, const Font& font = {});
/// The family and file that a font resolves to, for diagnosis: "JetBrains Mono (JetBrainsMono-Regular.ttf)".
std::string describeFont(const Font& font);

}  // namespace gull
