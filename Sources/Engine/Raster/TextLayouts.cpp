#include "Engine/Raster/TextLayouts.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace gull {

namespace {

/// The families of a design in order of preference; each supplies the characters that the ones before it
/// lack.
const char* families(FontDesign design) {
    switch (design) {
        case FontDesign::monospaced:
            return "JetBrains Mono, DejaVu Sans Mono, DejaVu Sans, monospace";
        case FontDesign::serif:
            return "Vollkorn, Liberation Serif, DejaVu Serif, serif";
        case FontDesign::proportional:
            return "Inter, DejaVu Sans, sans-serif";
    }
    return "sans-serif";
}

PangoWeight weightOf(FontWeight weight) {
    switch (weight) {
        case FontWeight::regular:
            return PANGO_WEIGHT_NORMAL;
        case FontWeight::semibold:
            return PANGO_WEIGHT_SEMIBOLD;
        case FontWeight::bold:
            return PANGO_WEIGHT_BOLD;
    }
    return PANGO_WEIGHT_NORMAL;
}

PangoAlignment alignmentOf(TextAlign align) {
    switch (align) {
        case TextAlign::left:
            return PANGO_ALIGN_LEFT;
        case TextAlign::centre:
            return PANGO_ALIGN_CENTER;
        case TextAlign::right:
            return PANGO_ALIGN_RIGHT;
    }
    return PANGO_ALIGN_LEFT;
}

int pangoUnits(double points) {
    return static_cast<int>(std::lround(points * PANGO_SCALE));
}
double points(int units) {
    return static_cast<double>(units) / PANGO_SCALE;
}

void setFont(PangoLayout* layout, const Font& font) {
    PangoFontDescription* description = pango_font_description_new();
    const std::string named =
        font.family.empty() ? families(font.design) : font.family + ", " + families(font.design);
    pango_font_description_set_family(description, named.c_str());
    pango_font_description_set_weight(description, weightOf(font.weight));
    if (font.italic) pango_font_description_set_style(description, PANGO_STYLE_ITALIC);
    pango_font_description_set_absolute_size(description, font.size * PANGO_SCALE);
    pango_layout_set_font_description(layout, description);
    pango_font_description_free(description);
}

/// Symbols that the monospaced font lacks. The fixed pitch of another font would squeeze them to a few
/// pixels, so they come from a proportional font, as large as the line height allows.
void setSigns(PangoAttrList* attributes, std::string_view text) {
    constexpr double scale = 1.09;  // JetBrains Mono's ascent to DejaVu Sans's
    for (const std::string_view sign : {"★", "↩"}) {
        for (std::size_t at = text.find(sign); at != std::string_view::npos; at = text.find(sign, at + 1)) {
            for (PangoAttribute* attribute :
                 {pango_attr_family_new("DejaVu Sans, sans-serif"), pango_attr_scale_new(scale)}) {
                attribute->start_index = static_cast<guint>(at);
                attribute->end_index = static_cast<guint>(at + sign.size());
                pango_attr_list_insert(attributes, attribute);
            }
        }
    }
}

/// Whether the text has Chinese characters or kana.
bool isIdeographic(std::string_view text) {
    const auto* at = text.data();
    const auto* end = at + text.size();
    for (; at < end; at = g_utf8_next_char(at)) {
        // A character of three bytes from U+3000 on begins with this byte or a larger one.
        if (static_cast<unsigned char>(*at) < 0xE3) continue;
        const GUnicodeScript script = g_unichar_get_script(g_utf8_get_char(at));
        if (script == G_UNICODE_SCRIPT_HAN || script == G_UNICODE_SCRIPT_HIRAGANA ||
            script == G_UNICODE_SCRIPT_KATAKANA) {
            return true;
        }
    }
    return false;
}

void setAttributes(PangoLayout* layout, std::string_view text, const TextStyle& style) {
    PangoAttrList* attributes = pango_attr_list_new();
    if (style.tracking != 0) {
        pango_attr_list_insert(attributes, pango_attr_letter_spacing_new(pangoUnits(style.tracking)));
    }
    // A fixed pitch is for reading letter by letter, so no ligatures that turn hyphens into arrows.
    // The serif font is set beside numbers here: use lining figures, which are as tall as capitals.
    std::string features = style.font.design == FontDesign::monospaced ? "liga 0, calt 0" : "lnum 1";
    if (style.font.tabularDigits) features += ", tnum 1";
    pango_attr_list_insert(attributes, pango_attr_font_features_new(features.c_str()));
    if (style.font.design == FontDesign::monospaced) setSigns(attributes, text);
    if (isIdeographic(text)) {
        // These characters have other forms in Chinese fonts; the game's only texts with them are Japanese.
        // They stand upright, and figures between the words of a serif look like theirs.
        pango_attr_list_insert(attributes, pango_attr_language_new(pango_language_from_string("ja")));
        if (style.font.design == FontDesign::serif) {
            pango_attr_list_insert(attributes,
                                   pango_attr_family_new("Noto Serif CJK JP, Noto Sans CJK JP, "
                                                         "Liberation Serif, DejaVu Serif, serif"));
        }
        pango_attr_list_insert(attributes, pango_attr_style_new(PANGO_STYLE_NORMAL));
    }
    pango_layout_set_attributes(layout, attributes);
    pango_attr_list_unref(attributes);
}

}  // namespace

TextLayout::TextLayout(PangoContext* context, std::string_view text, const TextStyle& style)
    : layout_(pango_layout_new(context)) {
    setFont(layout_, style.font);
    setAttributes(layout_, text, style);
    pango_layout_set_alignment(layout_, alignmentOf(style.align));
    if (style.maxWidth > 0) {
        pango_layout_set_width(layout_, pangoUnits(style.maxWidth));
        pango_layout_set_wrap(layout_, PANGO_WRAP_WORD_CHAR);
        if (style.maxLines > 0) {
            pango_layout_set_height(layout_, -style.maxLines);
            pango_layout_set_ellipsize(layout_, PANGO_ELLIPSIZE_END);
        }
    }
    pango_layout_set_text(layout_, text.data(), static_cast<int>(text.size()));
    PangoRectangle logical;
    pango_layout_get_extents(layout_, nullptr, &logical);
    left_ = points(logical.x);
    size_ = {points(logical.width), points(logical.height), points(pango_layout_get_baseline(layout_))};
}

TextLayout::~TextLayout() {
    for (Stamp& stamp : stamps_) {
        if (stamp.mask != nullptr) cairo_surface_destroy(stamp.mask);
    }
    g_object_unref(layout_);
}

const TextLayout::Stamp& TextLayout::stamp(double scale, int phase) {
    for (const Stamp& kept : stamps_) {
        if (kept.scale == scale && kept.phase == phase) return kept;
    }
    Stamp& slot = stamps_[nextStamp_];
    nextStamp_ = (nextStamp_ + 1) % stamps_.size();
    if (slot.mask != nullptr) cairo_surface_destroy(slot.mask);
    slot = rasterised(scale, phase);
    return slot;
}

TextLayout::Stamp TextLayout::rasterised(double scale, int phase) const {
    Stamp stamp{scale, phase, 0, 0, nullptr};
    PangoRectangle ink;
    pango_layout_get_extents(layout_, &ink, nullptr);
    if (ink.width <= 0 || ink.height <= 0) return stamp;
    const double across = static_cast<double>(phase) / phases;
    // The baseline lies on a whole pixel, as the stamping code expects.
    const double down = std::round(size_.baseline * scale) - size_.baseline * scale;
    const double x0 = (points(ink.x) - left_) * scale + across;
    const double y0 = points(ink.y) * scale + down;
    stamp.x = static_cast<int>(std::floor(x0)) - 1;
    stamp.y = static_cast<int>(std::floor(y0)) - 1;
    const int width = static_cast<int>(std::ceil(x0 + points(ink.width) * scale)) + 1 - stamp.x;
    const int height = static_cast<int>(std::ceil(y0 + points(ink.height) * scale)) + 1 - stamp.y;
    stamp.mask = cairo_image_surface_create(CAIRO_FORMAT_A8, width, height);
    cairo_t* context = cairo_create(stamp.mask);
    cairo_translate(context, across - stamp.x, down - stamp.y);
    cairo_scale(context, scale, scale);
    cairo_move_to(context, -left_, 0);
    pango_cairo_layout_path(context, layout_);
    cairo_fill(context);
    cairo_destroy(context);
    cairo_surface_flush(stamp.mask);
    return stamp;
}

TextLayouts::TextLayouts() : fontMap_(pango_cairo_font_map_new()) {
    // At 72 dots per inch a point is one unit. Outlines and advances stay as the font has them, unrounded.
    pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(fontMap_), 72);
    context_ = pango_font_map_create_context(fontMap_);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context_, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context_, FALSE);
    pango_context_set_language(context_, pango_language_from_string("en"));
}

TextLayouts::~TextLayouts() {
    index_.clear();
    entries_.clear();
    g_object_unref(context_);
    g_object_unref(fontMap_);
}

TextLayout& TextLayouts::layout(std::string_view text, const TextStyle& style) {
    const auto found = index_.find(KeyView{text, style});
    if (found != index_.end()) {
        entries_.splice(entries_.begin(), entries_, found->second);
        return entries_.front().layout;
    }
    if (entries_.size() >= capacity) {
        index_.erase(entries_.back().key);
        entries_.pop_back();
    }
    entries_.emplace_front(Key{std::string(text), style}, context_);
    index_.emplace(entries_.front().key, entries_.begin());
    return entries_.front().layout;
}

std::size_t TextLayouts::Hash::operator()(const KeyView& key) const {
    std::size_t hash = std::hash<std::string_view>{}(key.text);
    auto mix = [&hash](std::size_t value) { hash = (hash ^ value) * 0x9E3779B97F4A7C15ULL; };
    mix(std::hash<double>{}(key.style.font.size));
    mix(std::hash<double>{}(key.style.tracking));
    mix(std::hash<double>{}(key.style.maxWidth));
    mix(static_cast<std::size_t>(key.style.font.weight) * 4 +
        static_cast<std::size_t>(key.style.font.design));
    return hash ^ (hash >> 29);
}

TextLayouts& textLayouts() {
    static thread_local TextLayouts layouts;
    return layouts;
}

}  // namespace gull
