#pragma once

#include "Engine/Gl/GlObjects.h"
#include "Engine/Gl/TextureRef.h"
#include "Engine/Render/RenderOptions.h"
#include "Engine/Render/SkyDome.h"
#include "Engine/Stage/Texture.h"

#include <array>
#include <cstdint>
#include <glm/vec3.hpp>
#include <memory>
#include <unordered_map>

namespace gull {

/// The filtered skies that light stages, each made once.
class EnvironmentCache {
  public:
    /// Both must outlive the cache.
    EnvironmentCache(StateKeeper& keeper, const RenderOptions& options)
        : keeper_(keeper), options_(options) {}

    struct Environment {
        TextureRef cube;                      ///< for reflections; valid until collectGarbage()
        std::array<glm::vec3, 9> irradiance;  ///< see FilteredSky
        std::shared_ptr<const SkyDome> dome;  ///< null for the black environment
    };
    /// The environment of `sky` (null: a black one). `sunOnGround` is the sun's light on level ground; if it
    /// changes, the cube is made again.
    Environment get(const std::shared_ptr<Texture>& sky, const glm::vec3& sunOnGround);
    void collectGarbage();

  private:
    struct Entry {
        std::weak_ptr<Texture> owner;
        GlTexture cube;
        std::array<glm::vec3, 9> irradiance{};
        std::shared_ptr<const SkyDome> dome;
        glm::vec3 sunOnGround{0};
        std::uint64_t version = 0;
    };
    StateKeeper& keeper_;
    const RenderOptions& options_;
    std::unordered_map<std::uint64_t, Entry> entries_;  ///< by Texture::id(); 0: the black one
};

}  // namespace gull
