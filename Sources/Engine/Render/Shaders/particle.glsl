#include "frameValues.glsl"

VARYING(9) vec2 at;  // in the image
VARYING(10) vec4 colour;
VARYING(11) float range;  // from the eye
