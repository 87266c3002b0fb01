#include "Engine/Render/EnvironmentCache.h"

#include "Engine/Gl/Textures.h"
#include "Engine/Render/SkyFilter.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace gull {

namespace {

/// The levels of the sky's environment cube as square roots in 8 bits: enough for a picture of the sky, which
/// has no values above 1.
std::vector<std::vector<std::uint8_t>> cubeLevels(const FilteredSky& sky) {
    std::vector<std::vector<std::uint8_t>> levels;
    for (const auto& faces : sky.faces) {
        std::vector<std::uint8_t>& roots = levels.emplace_back();
        for (const glm::vec4& texel : faces)
            for (int k = 0; k < 4; ++k)
                roots.push_back(static_cast<std::uint8_t>(
                    std::lround(255 * std::sqrt(std::clamp(texel[k], 0.0F, 1.0F)))));
    }
    return levels;
}

}  // namespace

EnvironmentCache::Environment EnvironmentCache::get(const std::shared_ptr<Texture>& sky,
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
        entry.cube = makeCube(keeper_, FilteredSky::baseSize, cubeLevels(filtered));
        entry.irradiance = filtered.irradiance;
        entry.dome = sky ? std::make_shared<const SkyDome>(std::move(filtered.dome)) : nullptr;
        entry.sunOnGround = sunOnGround;
        entry.owner = sky;
        entry.version = version;
    }
    return {{entry.cube.name(), TextureRef::Kind::cube}, entry.irradiance, entry.dome};
}

void EnvironmentCache::collectGarbage() {
    std::erase_if(entries_,
                  [](const auto& entry) { return entry.first != 0 && entry.second.owner.expired(); });
}

}  // namespace gull
