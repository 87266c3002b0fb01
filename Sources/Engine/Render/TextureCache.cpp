#include "Engine/Render/TextureCache.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace gull {

namespace {

/// The mean of the straight colours, weighted by alpha; white for a fully transparent image.
std::array<std::uint8_t, 3> meanColour(const Image& image) {
    std::uint64_t sum[4] = {0, 0, 0, 0};
    for (std::size_t i = 0; i < image.pixels.size(); i += 4)
        for (std::size_t k = 0; k < 4; ++k) sum[k] += image.pixels[i + k];
    std::array<std::uint8_t, 3> mean{255, 255, 255};
    for (std::size_t k = 0; k < 3 && sum[3] > 0; ++k)
        mean[k] = static_cast<std::uint8_t>(std::min<std::uint64_t>(255, sum[k] * 255 / sum[3]));
    return mean;
}

bool opaque(const std::uint8_t* pixels, std::size_t bytes) {
    std::uint8_t all = 255;
    for (std::size_t i = 3; i < bytes; i += 4) all &= pixels[i];
    return all == 255;
}

}  // namespace

std::vector<std::uint8_t> halved(const std::vector<std::uint8_t>& pixels, int width, int height) {
    const int halfWidth = std::max(1, width / 2), halfHeight = std::max(1, height / 2);
    const std::size_t right = width > 1 ? 4 : 0;  // from a pixel to its neighbours, bytes
    const std::size_t up = height > 1 ? static_cast<std::size_t>(width) * 4 : 0;
    std::vector<std::uint8_t> half(static_cast<std::size_t>(halfWidth) *
                                   static_cast<std::size_t>(halfHeight) * 4);
    std::uint8_t* to = half.data();
    for (int y = 0; y < halfHeight; ++y) {
        const std::uint8_t* from =
            &pixels[static_cast<std::size_t>(2 * y) * static_cast<std::size_t>(width) * 4];
        for (int x = 0; x < halfWidth; ++x, from += 8)
            for (std::size_t k = 0; k < 4; ++k)
                *to++ = static_cast<std::uint8_t>(
                    (from[k] + from[k + right] + from[k + up] + from[k + up + right] + 2) / 4);
    }
    return half;
}

std::vector<std::uint8_t> straightPixels(const Image& image, const PixelRect& rect) {
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(rect.width) *
                                     static_cast<std::size_t>(rect.height) * 4);
    std::array<std::uint8_t, 3> empty{255, 255, 255};
    bool emptyKnown = false;
    std::uint8_t* to = pixels.data();
    for (int y = rect.y + rect.height - 1; y >= rect.y; --y) {
        const std::uint8_t* from = image.at(rect.x, y);
        const std::size_t rowBytes = static_cast<std::size_t>(rect.width) * 4;
        if (opaque(from, rowBytes)) {
            to = std::copy_n(from, rowBytes, to);
            continue;
        }
        for (int x = 0; x < rect.width; ++x, from += 4, to += 4) {
            unsigned alpha = from[3];
            if (alpha == 0 && !emptyKnown) {
                empty = meanColour(image);
                emptyKnown = true;
            }
            for (std::size_t k = 0; k < 3; ++k)
                to[k] = alpha == 255 ? from[k]
                        : alpha == 0
                            ? empty[k]
                            : static_cast<std::uint8_t>(std::min(255U, (from[k] * 255U + alpha / 2) / alpha));
            to[3] = static_cast<std::uint8_t>(alpha);
        }
    }
    return pixels;
}

TextureCache::TextureCache(StateKeeper& keeper) : keeper_(keeper) {
    const float anisotropy = std::min(greatestAnisotropy(), 2.0F);
    const auto filter = [](Quality quality) {
        return quality == Quality::base    ? Filter::linear
               : quality == Quality::quick ? Filter::linearNearestMip
                                           : Filter::linearLinearMip;
    };
    for (unsigned i = 0; i < std::size(samplers_); ++i) {
        const auto quality = static_cast<Quality>(i / 4);
        samplers_[i] = makeSampler(keeper, {filter(quality), (i & 1U) != 0, (i & 2U) != 0,
                                            quality == Quality::fine ? anisotropy : 1});
    }
}

TextureBinding TextureCache::binding(int unit, const std::shared_ptr<Texture>& texture, Wrap wrapS,
                                     Wrap wrapT, Quality quality) {
    Entry& entry = entries_[texture->id()];
    entry.owner = texture;
    const bool mipmaps = quality != Quality::base;
    if (entry.version != texture->version() || (mipmaps && !entry.hasMipmaps))
        upload(entry, *texture, mipmaps);
    const unsigned sampler = (wrapS == Wrap::repeat ? 1U : 0U) + (wrapT == Wrap::repeat ? 2U : 0U) +
                             static_cast<unsigned>(quality) * 4;
    return {unit, {entry.texture.name()}, samplers_[sampler].name()};
}

void TextureCache::upload(Entry& entry, const Texture& texture, bool mipmaps) {
    const Image& image = texture.image();
    if (!entry.texture) entry.texture = GlTexture(keeper_);
    if (entry.version == 0 || mipmaps) {
        PixelSize size{image.width, image.height};
        std::vector<std::uint8_t> pixels = straightPixels(image, {0, 0, size.width, size.height});
        uploadLevel(entry.texture, 0, size, pixels);
        for (int level = 1; mipmaps && (size.width > 1 || size.height > 1); ++level) {
            pixels = halved(pixels, size.width, size.height);
            size = {std::max(1, size.width / 2), std::max(1, size.height / 2)};
            uploadLevel(entry.texture, level, size, pixels);
        }
        entry.mean = glm::vec3(pixels[0], pixels[1], pixels[2]) / 255.0F;
    } else if (PixelRect rect = texture.changedSince(entry.version); rect.width > 0 && rect.height > 0) {
        uploadPart(entry.texture, {rect.x, image.height - rect.y - rect.height, rect.width, rect.height},
                   straightPixels(image, rect));
    }
    entry.hasMipmaps = mipmaps;
    entry.version = texture.version();
    texture.forgetPixels();
}

glm::vec3 TextureCache::mean(const Texture& texture) const {
    return entries_.at(texture.id()).mean;
}

void TextureCache::collectGarbage() {
    std::erase_if(entries_, [](const auto& entry) { return entry.second.owner.expired(); });
}

}  // namespace gull
