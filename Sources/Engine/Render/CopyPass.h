#pragma once

#include "Engine/Render/GlObjects.h"
#include "Engine/Render/PixelArea.h"
#include "Engine/Render/Program.h"

#include <glm/mat3x3.hpp>

#include <span>
#include <vector>

namespace gull {

/// Copies a picture onto the bound framebuffer. Whole rectangles, the shortest of programs and a picture of
/// Format::bgra8: what a software rasteriser has a path for that is several times quicker than a blit.
class CopyPass {
  public:
    explicit CopyPass(VertexStages& stages);
    /// Pixel by pixel, within `areas`; `size` is that of both.
    void draw(unsigned picture, const PixelSize& size, std::span<const PixelArea> areas) const;
    /// Stretched to `size`, and blended where `opacity` is below 1.
    void stretch(unsigned picture, const PixelSize& size, double opacity = 1) const;
    /// Slightly bent: what is seen at a place (0 to 1, origin lower left, homogeneous) is at `toPicture` of
    /// it in the picture, which goes on beyond its edge as it ends. Right within a tenth of a pixel as long
    /// as nothing moves by more than some twenty.
    void drawBent(unsigned picture, const PixelSize& size, const glm::dmat3& toPicture) const;

  private:
    void begin(unsigned picture, const PixelSize& size, const GlSampler& sampler, double opacity = 1) const;
    /// `corners`: clip space, then the place on the picture, of triangles.
    void drawTriangles(const std::vector<float>& corners) const;

    Program program_;
    Program faded_;
    GlSampler exact_;
    GlSampler smooth_;
    GlVertexArray array_;
    GlBuffer buffer_;
};

}  // namespace gull
