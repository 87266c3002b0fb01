#pragma once

#include "Engine/Gl/TextureRef.h"

namespace gull {

/// The pictures of the static layer, for the passes that draw over it. Light excludes paint.
struct StaticPictures {
    TextureRef lit;      ///< scene light
    TextureRef shade;    ///< share of lit that does not come from the sun; alpha: how far the sun is covered
    TextureRef surface;  ///< albedo that a lamp lights, as its square root; alpha: share that paint dims
    TextureRef normal;   ///< 0 to 1; alpha: share of lit that does not sparkle
    TextureRef depth;    ///< 0 near to 1 far
    TextureRef farthestDepth;  ///< the same in coarse pixels, never too near
    TextureRef picture;        ///< tone mapped
    TextureRef bloom;          ///< empty if nothing blooms
    TextureRef paint;          ///< a factor for the light, as its square root; empty if nothing is painted
    TextureRef sunShadow;      ///< empty without a sun that casts shadows
    TextureRef waterMirror;    ///< empty without water
    double mirrorLevel = 0;    ///< of the water that it shows
};

}  // namespace gull
