#pragma once

#include "Engine/Render/GlObjects.h"
#include "Engine/Render/RenderOptions.h"
#include "Engine/Stage/Texture.h"

#include <array>
#include <cstdint>
#include <glm/vec3.hpp>
#include <memory>
#include <unordered_map>

namespace gull {

/// The filtered skies that stages are lit by, each made once.
class EnvironmentCache {
  public:
    explicit EnvironmentCache(const RenderOptions& options) : options_(options) {}

    /// Binds the mirror cube of `sky` (null: a black one) to its unit and returns its irradiance (see
    /// FilteredSky). `sunOnGround` is the sun's light on level ground; a change of it makes the cube anew.
    const std::array<glm::vec3, 9>& bind(const std::shared_ptr<Texture>& sky, const glm::vec3& sunOnGround);
    void collectGarbage();

  private:
    struct Entry {
        std::weak_ptr<Texture> owner;
        GlTexture cube;
        std::array<glm::vec3, 9> irradiance{};
        glm::vec3 sunOnGround{0};
        std::uint64_t version = 0;
    };
    const RenderOptions& options_;
    std::unordered_map<std::uint64_t, Entry> entries_;  ///< by Texture::id(); 0: the black one
};

}  // namespace gull
