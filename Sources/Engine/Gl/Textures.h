#pragma once

#include "Engine/Gl/Format.h"
#include "Engine/Gl/GlObjects.h"
#include "Engine/Gl/PixelArea.h"
#include "Engine/Gl/TextureRef.h"

#include <cstdint>
#include <span>
#include <vector>

namespace gull {

/// How a texture or a sampler interpolates between texels and between mipmaps.
enum class Filter {
    nearest,
    linear,            ///< the full-size image, smoothed
    linearNearestMip,  ///< smoothed in the nearest mipmap
    linearLinearMip,   ///< smoothed within and between mipmaps
};

/// An empty texture without mipmaps, clamped at its edges.
GlTexture makeTexture(StateKeeper& keeper, const PixelSize& size, Format format, Filter filter);
/// The same with `samples` samples a pixel.
GlTexture makeMultisampledTexture(StateKeeper& keeper, const PixelSize& size, Format format, int samples);
/// Makes lookups in a depth texture compare (less or equal passes) instead of returning the depth.
void compareDepth(TextureRef texture);

/// Replaces a whole level of a texture with straight R G B A bytes, lowest row first.
void uploadLevel(const GlTexture& texture, int level, const PixelSize& size,
                 std::span<const std::uint8_t> pixels);
/// Replaces a part of level 0 with tightly packed pixels.
void uploadPart(const GlTexture& texture, const PixelArea& part, std::span<const std::uint8_t> pixels);
/// Replaces a part of a bgra8 texture from a bitmap with that byte order. `pixels` points at the part's first
/// pixel; rows are `strideBytes` apart and are uploaded in the order they come.
void uploadBitmapPart(const GlTexture& texture, const PixelArea& part, const unsigned char* pixels,
                      int strideBytes);

/// A cube texture. `levels`: for each mipmap the R G B A bytes of its six faces (+x, -x, +y, -y, +z, -z),
/// one after another, or nothing to leave the level undefined; the first is `size` texels a side, each
/// further one half of that.
GlTexture makeCube(StateKeeper& keeper, int size, const std::vector<std::vector<std::uint8_t>>& levels);

struct SamplerDescription {
    Filter filter = Filter::linear;
    bool repeatS = false;
    bool repeatT = false;
    float anisotropy = 1;  ///< of the footprint, 1: none
};
GlSampler makeSampler(StateKeeper& keeper, const SamplerDescription& description);
/// The greatest anisotropy that samplers may ask for: 1 where it is not supported and on a CPU, where the
/// rasteriser walks the whole footprint texel by texel.
float greatestAnisotropy();

}  // namespace gull
