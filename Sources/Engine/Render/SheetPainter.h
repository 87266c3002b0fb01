#pragma once

#include "Engine/Raster/Sheet.h"
#include "Engine/Render/GlObjects.h"
#include "Engine/Render/PixelArea.h"
#include "Engine/Render/Program.h"

#include <array>
#include <map>
#include <span>
#include <vector>

namespace gull {

/// Sheets laid over the frame, back to front. Bitmaps are kept as textures, by the sheets' numbers.
///
/// Everything is drawn as whole rectangles with the shortest of programs, from textures that hold their bytes
/// in the bitmaps' own order: what a software rasteriser has a quick path for, several times faster than its
/// usual one.
class SheetPainter {
  public:
    explicit SheetPainter(VertexStages& stages);

    /// Takes over what is to be drawn next on a framebuffer of `size`, which must outlive that. What changed
    /// is uploaded; a bitmap of another size than its sheet had before, all of it. Returns where the sheets
    /// look otherwise than those before; areas may overlap.
    std::vector<PixelArea> show(std::span<const Sheet> sheets, const PixelSize& size);
    /// Blends the sheets shown over the bound framebuffer within `areas`, no two of which overlap.
    void draw(std::span<const PixelArea> areas);

  private:
    struct Kept {
        GlTexture texture;
        PixelSize size;
    };
    /// A sheet as it was drawn last, its parts as pixels of the framebuffer.
    struct Drawn {
        int id = 0;
        PixelRect place;
        double opacity = 0;
        std::vector<GradientStop> wash;
        std::vector<PixelArea> parts;
        bool looksLike(const Drawn& other) const;
    };
    /// A premultiplied colour, or the place on a texture.
    using Value = std::array<float, 4>;
    struct Vertex {
        float x, y;  ///< clip space
        Value value;
    };

    void upload(const Sheet& sheet);
    PixelArea onFramebuffer(const PixelRect& place, const PixelRect& part) const;
    Drawn asDrawn(const Sheet& sheet) const;
    void addWash(const Sheet& sheet, const PixelArea& area);
    void addBitmap(const Sheet& sheet, const PixelArea& area);
    /// `valueAt` tells the value at a corner, pixels from the lower left.
    template <class ValueAt>
    void addRectangle(const PixelArea& area, const ValueAt& valueAt);
    void drawVertices(const Program& program);

    Program wash_;
    Program bitmap_;
    Program fadedBitmap_;
    GlVertexArray array_;
    GlBuffer buffer_;
    std::map<int, Kept> kept_;
    PixelSize size_;
    std::span<const Sheet> sheets_;
    std::vector<Drawn> drawn_;
    std::vector<Vertex> vertices_;
};

}  // namespace gull
