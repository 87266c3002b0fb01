#include "interface.glsl"

VARYING(9) vec4 value;  // the colour; xy: a place in the bitmap
