#pragma once

#include "Engine/Render/GlObjects.h"
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
    /// Binds the mirror cube of `sky` (null: a black one) to its unit and returns its irradiance (see
    /// FilteredSky).
    const std::array<glm::vec3, 9>& bind(const std::shared_ptr<Texture>& sky);
    void collectGarbage();

  private:
    struct Entry {
        std::weak_ptr<Texture> owner;
        GlTexture cube;
        std::array<glm::vec3, 9> irradiance{};
        std::uint64_t version = 0;
    };
    std::unordered_map<std::uint64_t, Entry> entries_;  ///< by Texture::id(); 0: the black one
};

}  // namespace gull
