#pragma once

#include "Engine/Gl/TextureRef.h"
#include "Engine/Gl/Textures.h"
#include "Engine/Stage/Material.h"
#include "Engine/Stage/Texture.h"

#include <cstdint>
#include <glm/vec3.hpp>
#include <memory>
#include <unordered_map>

namespace gull {

/// Uploads each texture once, with mipmaps, and afterwards only what changed. Images come premultiplied;
/// textures hold straight colours, and transparent pixels take the picture's mean colour so that filtering
/// draws no dark seams.
class TextureCache {
  public:
    explicit TextureCache(StateKeeper& keeper);

    /// base: only the full-size image, filtered. quick: only the nearest mipmap, for anything drawn every
    /// frame without a GPU.
    enum class Quality { fine, quick, base };

    /// `texture` for the sampler at `unit`, up to date, with a sampler object for `wrapS` and `wrapT`.
    TextureBinding binding(int unit, const std::shared_ptr<Texture>& texture, Wrap wrapS, Wrap wrapT,
                           Quality quality = Quality::fine);
    TextureBinding binding(int unit, const Channel& channel, Quality quality) {
        return binding(unit, channel.texture, channel.wrapS, channel.wrapT, quality);
    }
    /// The mean colour as stored, of a texture that was bound with mipmaps before.
    glm::vec3 mean(const Texture& texture) const;
    void collectGarbage();

  private:
    struct Entry {
        std::weak_ptr<Texture> owner;
        GlTexture texture;
        std::uint64_t version = 0;
        bool hasMipmaps = false;  ///< of this version
        glm::vec3 mean{1};        ///< the last mipmap
    };
    void upload(Entry& entry, const Texture& texture, bool mipmaps);

    StateKeeper& keeper_;
    std::unordered_map<std::uint64_t, Entry> entries_;  ///< by Texture::id()
    GlSampler samplers_[12];                            ///< 4 * quality + (repeat in s: 1) + (in t: 2)
};

/// The pixels of `rect` of a premultiplied image, converted to straight colours, lowest row first as OpenGL
/// wants them.
std::vector<std::uint8_t> straightPixels(const Image& image, const PixelRect& rect);
/// The next mipmap of an RGBA picture: half as wide and high (rounded down, at least 1), each pixel the mean
/// of four.
std::vector<std::uint8_t> halved(const std::vector<std::uint8_t>& pixels, int width, int height);

}  // namespace gull
