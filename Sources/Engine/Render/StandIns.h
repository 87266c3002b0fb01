#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Stage/Texture.h"

#include <memory>

namespace gull {

class GraphicsDevice;

/// Replacements for missing pictures that a program may read; they change nothing. They are stored and
/// sampled like the others, because a software rasteriser compiles a program for each way in which its
/// textures are sampled.
struct StandIns {
    explicit StandIns(GraphicsDevice& device);

    Target black;                       ///< no bloom
    Target nothing;                     ///< transparent: nothing mirrored in water
    Target white;                       ///< no paint
    Target openSky;                     ///< no contact shadows
    Target farthestShadow;              ///< a shadow map that hides nothing
    std::shared_ptr<Texture> whiteMap;  ///< a material's map that changes no colour
    std::shared_ptr<Texture> flatMap;   ///< a normal map that bends nothing
};

}  // namespace gull
