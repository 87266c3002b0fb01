#pragma once

#include "Engine/Raster/Image.h"

namespace gull {

/// The faces of the items. Upright, opaque pictures in sRGB, except for the normal map.
namespace ItemFaces {

/// 256 x 256: a struck coin with a cross in relief inside a beaded rim, in old gold.
Image doubloonColour();
/// The same relief as a normal map.
Image doubloonNormal();
/// 256 x 256: a cream dial with Roman numerals, the four written IIII, and the hands at ten past ten.
Image watchDial();
/// 256 x 256: eight points in a double ring, a red N at the top.
Image compassRose();
/// 512 x 256: the wrap of a drink can, the word FIZZ twice around.
Image canLabel();

}  // namespace ItemFaces

}  // namespace gull
