#include "Engine/Render/EnvironmentCache.h"

#include "Engine/Render/SkyFilter.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

namespace gull {

namespace {

GlTexture makeCube(const FilteredSky& sky) {
    GlTexture cube = GlTexture::make();
    glActiveTexture(GL_TEXTURE0 + unitUpload);
    glBindTexture(GL_TEXTURE_CUBE_MAP, cube.name());
    for (int level = 0; level < FilteredSky::levels; ++level) {
        int size = FilteredSky::baseSize >> level;
        const auto& faces = sky.faces[static_cast<std::size_t>(level)];
        for (unsigned face = 0; face < 6; ++face)
            glTexImage2D(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face, level, GL_RGBA16F, size, size, 0, GL_RGBA,
                         GL_FLOAT,
                         faces.empty() ? nullptr : &faces[face * static_cast<std::size_t>(size * size)]);
    }
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAX_LEVEL, FilteredSky::levels - 1);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    return cube;
}

}  // namespace

const std::array<glm::vec3, 9>& EnvironmentCache::bind(const std::shared_ptr<Texture>& sky) {
    Entry& entry = entries_[sky ? sky->id() : 0];
    std::uint64_t version = sky ? sky->version() : 1;
    if (entry.version != version) {
        FilteredSky filtered;
        if (sky) filtered = filterSky(sky->image());
        for (std::size_t level = 0; !sky && level < FilteredSky::levels; ++level) {
            auto size = static_cast<std::size_t>(FilteredSky::baseSize >> level);
            filtered.faces[level].assign(6 * size * size, glm::vec4(0, 0, 0, 1));
        }
        entry.cube = makeCube(filtered);
        entry.irradiance = filtered.irradiance;
        entry.owner = sky;
        entry.version = version;
    }
    glEnable(GL_TEXTURE_CUBE_MAP_SEAMLESS);
    glActiveTexture(GL_TEXTURE0 + unitEnvironment);
    glBindTexture(GL_TEXTURE_CUBE_MAP, entry.cube.name());
    return entry.irradiance;
}

void EnvironmentCache::collectGarbage() {
    std::erase_if(entries_,
                  [](const auto& entry) { return entry.first != 0 && entry.second.owner.expired(); });
}

}  // namespace gull
