#pragma once

#include "Engine/Gl/DrawState.h"
#include "Engine/Gl/Textures.h"
#include "Engine/Raster/OverlayLayer.h"

#include <array>
#include <map>
#include <span>
#include <vector>

namespace gull {

struct RenderContext;

/// The overlay's layers, blended over the frame from back to front. Bitmaps stay in graphics memory as
/// textures, keyed by the layers' ids.
///
/// Everything is drawn as whole rectangles with the shortest of programs, from textures with the bitmaps' own
/// byte order: a software rasteriser has a path for that several times faster than its usual one.
class OverlayLayers {
  public:
    explicit OverlayLayers(RenderContext& context) : context_(context) {}

    /// Sets the layers to draw next on a framebuffer of `size`; the layers must outlive that drawing. Uploads
    /// what changed, and the whole bitmap if its size changed. Returns the areas where the layers look
    /// different from the last ones; areas may overlap.
    std::vector<PixelArea> show(std::span<const OverlayLayer> layers, const PixelSize& size);
    /// Blends the layers over `target` within `areas`, which must not overlap.
    void draw(const DrawTarget& target, std::span<const PixelArea> areas);

  private:
    struct Bitmap {
        GlTexture texture;
        PixelSize size;
    };
    /// A layer as drawn last; its parts in pixels of the framebuffer.
    struct Drawn {
        int id = 0;
        PixelRect place;
        double opacity = 0;
        std::vector<GradientStop> wash;
        std::vector<PixelArea> parts;
        bool looksLike(const Drawn& other) const;
    };
    /// A premultiplied colour, or the place on a bitmap.
    using Value = std::array<float, 4>;

    void upload(const OverlayLayer& layer);
    PixelArea onFramebuffer(const PixelRect& place, const PixelRect& part) const;
    Drawn asDrawn(const OverlayLayer& layer) const;
    void addGradient(const OverlayLayer& layer, const PixelArea& area);
    void addBitmap(const OverlayLayer& layer, const PixelArea& area);
    /// `valueAt` returns the value at a corner, given in pixels from the lower left.
    template <class ValueAt>
    void addRectangle(const PixelArea& area, const ValueAt& valueAt);
    void drawVertices(const DrawTarget& target, const OverlayLayer& layer);

    RenderContext& context_;
    std::map<int, Bitmap> bitmaps_;
    PixelSize size_;
    std::span<const OverlayLayer> layers_;
    std::vector<Drawn> drawn_;
    std::vector<float> vertices_;
};

}  // namespace gull
