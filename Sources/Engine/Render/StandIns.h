#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Stage/Texture.h"

#include <memory>

namespace gull {

class GraphicsDevice;

/// What takes the place of a picture that a program could read but that is missing, and changes nothing. It
/// is stored and read as the others are: a software rasteriser compiles a program again for every way in
/// which its textures are sampled.
struct StandIns {
    explicit StandIns(GraphicsDevice& device);

    Target black;                       ///< no bloom
    Target white;                       ///< no paint, no contact shadows
    Target farthestShadow;              ///< a shadow map that hides nothing
    std::shared_ptr<Texture> whiteMap;  ///< a material's map that changes no colour
    std::shared_ptr<Texture> flatMap;   ///< a normal map that bends nothing
};

}  // namespace gull
