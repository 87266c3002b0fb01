#pragma once

#include "Engine/Raster/Text.h"

#include <array>
#include <list>
#include <string>
#include <unordered_map>

// Pango's and Cairo's types by name only: their headers stay in the sources.
struct _PangoLayout;
struct _PangoContext;
struct _PangoFontMap;
struct _cairo_surface;

namespace gull {

/// One text in one style: its measurements, and its coverage at the scales it was recently drawn at. Private
/// to this room.
class TextLayout {
  public:
    /// The text's coverage, to be stamped in any colour. (x, y) is the mask's corner in pixels, relative to
    /// the measured box's.
    struct Stamp {
        double scale = 0;
        int phase = 0;
        int x = 0;
        int y = 0;
        _cairo_surface* mask = nullptr;  ///< null when nothing is drawn
    };
    static constexpr int phases = 4;               ///< horizontal positions within a pixel
    static constexpr double largestKeptScale = 8;  ///< beyond: drawn from outlines every time

    TextLayout(_PangoContext* context, std::string_view text, const TextStyle& style);
    ~TextLayout();
    TextLayout(const TextLayout&) = delete;
    TextLayout& operator=(const TextLayout&) = delete;

    const TextSize& size() const { return size_; }
    /// The origin of the measured box in the layout's coordinates, points.
    double left() const { return left_; }
    _PangoLayout* pango() const { return layout_; }
    /// Valid until the next call.
    const Stamp& stamp(double scale, int phase);

  private:
    Stamp rasterised(double scale, int phase) const;

    _PangoLayout* layout_;
    TextSize size_;
    double left_ = 0;
    std::array<Stamp, 4> stamps_;
    std::size_t nextStamp_ = 0;
};

/// The recently used layouts. Only a cache: the answers depend on nothing but the arguments.
class TextLayouts {
  public:
    static constexpr std::size_t capacity = 256;

    TextLayouts();
    ~TextLayouts();
    TextLayouts(const TextLayouts&) = delete;
    TextLayouts& operator=(const TextLayouts&) = delete;

    /// Valid until `capacity` other layouts have been asked for.
    TextLayout& layout(std::string_view text, const TextStyle& style);

  private:
    struct Key {
        std::string text;
        TextStyle style;
    };
    struct KeyView {
        std::string_view text;
        const TextStyle& style;
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const KeyView& key) const;
        std::size_t operator()(const Key& key) const { return (*this)(KeyView{key.text, key.style}); }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(const Key& a, const Key& b) const { return a.text == b.text && a.style == b.style; }
        bool operator()(const KeyView& a, const Key& b) const {
            return a.text == b.text && a.style == b.style;
        }
        bool operator()(const Key& a, const KeyView& b) const { return (*this)(b, a); }
    };
    struct Entry {
        Key key;
        TextLayout layout;
        Entry(Key entryKey, _PangoContext* context)
            : key(std::move(entryKey)), layout(context, key.text, key.style) {}
    };

    _PangoFontMap* fontMap_;
    _PangoContext* context_;
    std::list<Entry> entries_;  ///< most recently used first
    std::unordered_map<Key, std::list<Entry>::iterator, Hash, Equal> index_;
};

/// This thread's layouts.
TextLayouts& textLayouts();

}  // namespace gull
