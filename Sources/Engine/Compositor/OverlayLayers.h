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

/// The overlay's layers, blended over the frame from back to front. Bitmaps stay on the graphics card as
/// textures, by the layers' numbers.
///
/// Everything is drawn as whole rectangles with the shortest of programs, from textures that hold their bytes
/// in the bitmaps' own order: a software rasteriser has a quick path for that, several times faster than its
/// usual one.
class OverlayLayers {
  public:
    explicit OverlayLayers(RenderContext& context) : context_(context) {}

    /// Takes over what is to be drawn next on a framebuffer of `size`, which must outlive that. What changed
    /// is uploaded; a bitmap of another size than its layer had before, all of it. Returns where the layers
    /// look different from those before; areas may overlap.
    std::vector<PixelArea> show(std::span<const OverlayLayer> layers, const PixelSize& size);
    /// Blends the layers shown over `target` within `areas`, no two of which overlap.
    void draw(const DrawTarget& target, std::span<const PixelArea> areas);

  private:
    struct Bitmap {
        GlTexture texture;
        PixelSize size;
    };
    /// A layer as it was drawn last, its parts as pixels of the framebuffer.
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
    /// `valueAt` tells the value at a corner, pixels from the lower left.
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
