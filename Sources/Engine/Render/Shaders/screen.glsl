#include "interface.glsl"

VARYING(9) vec2 st;  // 0 to 1 across the target
