#include "frameValues.glsl"

// The pixel's ray per unit of distance along the camera's axis, in the world and in the moving shadow map:
// with the depth, a point is one multiplication away.
VARYING(9) vec2 st;
VARYING(10) vec3 ray;
VARYING(11) vec3 shadowRay;
FLAT(12) vec3 shadowEye;
FLAT(13) vec4 kMoving;  // shape of the moving shadow map, see FrameFields.h
