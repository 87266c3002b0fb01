#include "Engine/Render/EnvironmentCache.h"

#include "Engine/Render/SkyFilter.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace gull {

namespace {

/// Stored as square roots in 8 bits, which a picture of the sky (nothing above 1) fits into.
GlTexture makeCube(const FilteredSky& sky) {
    GlTexture cube = GlTexture::make();
    glActiveTexture(GL_TEXTURE0 + unitUpload);
    glBindTexture(GL_TEXTURE_CUBE_MAP, cube.name());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    std::vector<std::uint8_t> roots;
    for (int level = 0; level < FilteredSky::levels; ++level) {
        int size = FilteredSky::baseSize >> level;
        roots.clear();
        for (const glm::vec4& texel : sky.faces[static_cast<std::size_t>(level)])
            for (int k = 0; k < 4; ++k)
                roots.push_back(static_cast<std::uint8_t>(
                    std::lround(255 * std::sqrt(std::clamp(texel[k], 0.0F, 1.0F)))));
        for (unsigned face = 0; face < 6; ++face)
            glTexImage2D(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face, level, GL_RGBA8, size, size, 0, GL_RGBA,
                         GL_UNSIGNED_BYTE,
                         roots.empty() ? nullptr : &roots[face * static_cast<std::size_t>(size * size) * 4]);
    }
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAX_LEVEL, FilteredSky::levels - 1);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    return cube;
}

}  // namespace

const std::array<glm::vec3, 9>& EnvironmentCache::bind(const std::shared_ptr<Texture>& sky,
                                                       const glm::vec3& sunOnGround) {
    Entry& entry = entries_[sky ? sky->id() : 0];
    std::uint64_t version = sky ? sky->version() : 1;
    if (entry.version != version || entry.sunOnGround != sunOnGround) {
        FilteredSky filtered;
        if (sky)
            filtered = filterSky(sky->image(), 1.0F + sunOnGround * options_.groundLift, options_.mirrorFill);
        for (std::size_t level = 0; !sky && level < FilteredSky::levels; ++level) {
            auto size = static_cast<std::size_t>(FilteredSky::baseSize >> level);
            filtered.faces[level].assign(6 * size * size, glm::vec4(0, 0, 0, 1));
        }
        entry.cube = makeCube(filtered);
        entry.irradiance = filtered.irradiance;
        entry.sunOnGround = sunOnGround;
        entry.owner = sky;
        entry.version = version;
    }
    glEnable(GL_TEXTURE_CUBE_MAP_SEAMLESS);
    glActiveTexture(GL_TEXTURE0 + unitEnvironment);
    glBindTexture(GL_TEXTURE_CUBE_MAP, entry.cube.name());
    glBindSampler(unitEnvironment, 0);
    return entry.irradiance;
}

void EnvironmentCache::collectGarbage() {
    std::erase_if(entries_,
                  [](const auto& entry) { return entry.first != 0 && entry.second.owner.expired(); });
}

}  // namespace gull
