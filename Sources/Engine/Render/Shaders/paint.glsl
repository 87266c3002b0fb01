#include "interface.glsl"

VARYING(9) vec2 at;  // in the multiply map
FLAT(10) float strength;
