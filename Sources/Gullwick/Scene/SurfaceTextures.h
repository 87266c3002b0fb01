#pragma once

#include "Engine/Raster/Image.h"
#include "Gullwick/Scene/Look.h"

namespace gull {

/// The textures of sand, sea and effects. All are sRGB with premultiplied alpha, except for the normal maps,
/// and are the same every time.
namespace SurfaceTextures {

/// 1024 x 1024, opaque, tiles: pale sand with grains of four kinds over soft blotches.
Image sandDetail();
/// 512 x 512 normal map, tiles: seven wind ripples with a little grain.
Image sandNormal();
/// 512 x 512 normal map, tiles: chop on a slight swell.
Image waterNormal();
/// 16 x 512: shallow and clear at the bottom, deep and nearly opaque at the top.
Image waterColour(const BeachLook& look);
/// 1024 x 128, tiles horizontally: bubbles that get denser toward a white band at the bottom edge.
Image foam();
/// 256 x 256: a thin soft ring.
Image ring();
/// 128 x 384: three chevrons pointing up, brighter toward the top.
Image arrow();
/// 64 x 64: a soft dot.
Image puff();
/// 64 x 64: a small dot with a cross of rays.
Image sparkle();

}  // namespace SurfaceTextures

}  // namespace gull
