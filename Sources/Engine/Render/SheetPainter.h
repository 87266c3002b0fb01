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
    SheetPainter();

    /// Blends `sheets` over the bound framebuffer of `size`. What changed is uploaded; a bitmap of another
    /// size than its sheet had before, all of it.
    void draw(std::span<const Sheet> sheets, const PixelSize& size);

  private:
    struct Kept {
        GlTexture texture;
        PixelSize size;
    };
    /// A premultiplied colour, or the place on a texture.
    using Value = std::array<float, 4>;
    struct Vertex {
        float x, y;  ///< clip space
        Value value;
    };

    void upload(const Sheet& sheet);
    void addWash(const Sheet& sheet);
    void addBitmap(const Sheet& sheet);
    /// `area`: pixels from the top left; `corners`: top left and right, bottom left and right.
    void addRectangle(const Sheet::Area& area, const std::array<Value, 4>& corners);
    void drawVertices(const Program& program);

    Program wash_;
    Program bitmap_;
    Program fadedBitmap_;
    GlVertexArray array_;
    GlBuffer buffer_;
    std::map<int, Kept> kept_;
    PixelSize size_;
    std::vector<Vertex> vertices_;
};

}  // namespace gull
