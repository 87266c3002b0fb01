#pragma once

#include "Engine/Raster/Colour.h"
#include "Engine/Stage/Texture.h"

#include <glm/vec2.hpp>
#include <memory>

namespace gull {

enum class Wrap { clamp, repeat };

/// One texture of a material and the mapping of its coordinates: st = uv * scale + offset.
struct Channel {
    std::shared_ptr<Texture> texture;  ///< null: the channel is off
    Wrap wrapS = Wrap::clamp;
    Wrap wrapT = Wrap::clamp;
    glm::dvec2 scale{1, 1};
    glm::dvec2 offset{0, 0};
    int uvSet = 0;         ///< 0 or 1, the geometry's set of texture coordinates
    double intensity = 1;  ///< normal maps: how far the normal bends; others: a factor

    explicit operator bool() const { return texture != nullptr; }
};

/// How a surface responds to light. Colours are sRGB and converted to linear before shading; a texture
/// multiplies its colour.
struct Material {
    enum class Lighting { physicallyBased, lambert, constant };
    enum class Blend { opaque, alpha, add };

    Lighting lighting = Lighting::physicallyBased;
    Colour diffuse{1, 1, 1, 1};
    Channel diffuseMap;
    Channel normalMap;            ///< red bends along +s, green along +t
    Channel multiplyMap;          ///< multiplies the albedo
    Colour multiply{1, 1, 1, 1};  ///< multiplies the result; may exceed 1
    Colour emission{0, 0, 0, 1};
    double metalness = 0;  ///< 0 to 1
    double roughness = 0.5;
    double sparkle = 0;  ///< of grains in the sun, 1: as bright as white paper; opaque surfaces only
    double opacity = 1;  ///< times the alpha of diffuse colour and map
    Blend blend = Blend::opaque;
    bool writesDepth = true;
    bool doubleSided = false;
    /// A wide, smooth, blended surface (the sea) or soft things floating on it; a renderer short of time may
    /// shade it at half resolution.
    bool smooth = false;
};

}  // namespace gull
