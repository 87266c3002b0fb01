#include "Engine/Raster/Text.h"

#include "Engine/Raster/CanvasImpl.h"
#include "Engine/Raster/TextLayouts.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-font.h>

#include <cmath>

namespace gull {

/// Draws text; the only place outside Canvas that uses its context.
class TextRenderer {
  public:
    static void draw(Canvas& canvas, TextLayout& layout, const Colour& colour, double x, double y) {
        cairo_t* context = canvas.impl_->context;
        cairo_matrix_t matrix;
        cairo_get_matrix(context, &matrix);
        cairo_save(context);
        cairo_set_source_rgba(context, colour.r, colour.g, colour.b, colour.a);
        const bool upright =
            matrix.xy == 0 && matrix.yx == 0 && matrix.xx > 0 && std::abs(matrix.yy) == matrix.xx;
        if (upright && matrix.xx <= TextLayout::largestKeptScale) {
            drawKept(context, layout, matrix, x, y);
        } else {
            cairo_translate(context, x, y);
            if (matrix.xx * matrix.yy - matrix.xy * matrix.yx < 0) cairo_scale(context, 1, -1);
            cairo_move_to(context, -layout.left(), 0);
            pango_cairo_layout_path(context, layout.pango());
            cairo_fill(context);
        }
        cairo_restore(context);
    }

  private:
    /// Stamps the cached coverage of the text, at a position rounded to whole pixels vertically, which keeps
    /// the baseline sharp, and to quarter pixels horizontally.
    static void drawKept(cairo_t* context, TextLayout& layout, const cairo_matrix_t& matrix, double x,
                         double y) {
        const double scale = matrix.xx;
        const double deviceX = x * scale + matrix.x0;
        const double deviceY = y * matrix.yy + matrix.y0;
        const double quarters = std::round(deviceX * TextLayout::phases);
        const double left = std::floor(quarters / TextLayout::phases);
        const int phase = static_cast<int>(quarters - left * TextLayout::phases);
        const double baseline = layout.size().baseline * scale;
        const double top = std::round(deviceY + baseline) - std::round(baseline);
        const TextLayout::Stamp& stamp = layout.stamp(scale, phase);
        if (stamp.mask == nullptr) return;
        cairo_identity_matrix(context);
        cairo_mask_surface(context, stamp.mask, left + stamp.x, top + stamp.y);
    }
};

TextSize measureText(std::string_view text, const TextStyle& style) {
    return textLayouts().layout(text, style).size();
}

void drawText(Canvas& canvas, std::string_view text, const TextStyle& style, const Colour& colour, double x,
              double y) {
    if (text.empty() || colour.a <= 0) return;
    TextRenderer::draw(canvas, textLayouts().layout(text, style), colour, x, y);
}

std::string upperCase(std::string_view text) {
    char* upper = g_utf8_strup(text.data(), static_cast<gssize>(text.size()));
    std::string result = upper;
    g_free(upper);
    return result;
}

bool anyFontInstalled() {
    FcPattern* pattern = FcPatternCreate();
    FcObjectSet* objects = FcObjectSetBuild(FC_FAMILY, nullptr);
    FcFontSet* fonts = FcFontList(nullptr, pattern, objects);
    const bool any = fonts != nullptr && fonts->nfont > 0;
    if (fonts != nullptr) FcFontSetDestroy(fonts);
    FcObjectSetDestroy(objects);
    FcPatternDestroy(pattern);
    return any;
}

bool canShow(std::string_view text, const Font& font) {
    return pango_layout_get_unknown_glyphs_count(textLayouts().layout(text, {.font = font}).pango()) == 0;
}

std::string describeFont(const Font& font) {
    TextLayout& layout = textLayouts().layout("A", {.font = font});
    PangoContext* context = pango_layout_get_context(layout.pango());
    PangoFont* loaded = pango_context_load_font(context, pango_layout_get_font_description(layout.pango()));
    if (loaded == nullptr) return "none";
    std::string result = "unknown";
    if (PANGO_IS_FC_FONT(loaded)) {
        FcPattern* pattern = pango_fc_font_get_pattern(PANGO_FC_FONT(loaded));
        FcChar8* family = nullptr;
        FcChar8* file = nullptr;
        if (FcPatternGetString(pattern, FC_FAMILY, 0, &family) == FcResultMatch &&
            FcPatternGetString(pattern, FC_FILE, 0, &file) == FcResultMatch) {
            std::string path = reinterpret_cast<const char*>(file);
            path.erase(0, path.find_last_of('/') + 1);
            result = std::string(reinterpret_cast<const char*>(family)) + " (" + path + ")";
        }
    }
    g_object_unref(loaded);
    return result;
}

}  // namespace gull
