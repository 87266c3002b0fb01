#include "frameValues.glsl"

VARYING(9) vec3 position;
VARYING(10) vec3 normal;
VARYING(11) vec4 mapsAt;      // diffuse, normal
VARYING(12) vec3 multiplyAt;  // z: roughness
VARYING(13) vec4 baseColour;
VARYING(14) vec3 shadowAt;
VARYING(15) vec3 skyHere;  // the sky's light on a white surface of this normal, ambient light included
#ifdef MATT
// Tone mapped: the surface in shadow with its map's mean, and what the sun adds.
VARYING(16) vec3 shaded;
VARYING(17) vec3 sunny;
#endif

#if defined(VERTEX) || defined(UNIFORMS_PER_PIXEL)
uniform vec4 multiply;     // factor of the result; w: brightest light
uniform vec4 emission;     // how much contact shadows dim the sun
uniform vec4 surface;      // metalness, roughness, bend of the normal map, density of water
uniform vec4 mapStrength;  // diffuse, multiply, glint spread, sparkle
#endif
#ifdef UNIFORMS_PER_PIXEL
#define kSkyX frame.irradiance[3].rgb
#define kSkyY frame.irradiance[1].rgb
#define kSkyZ frame.irradiance[2].rgb
#define kMultiply multiply
#define kEmission emission
#define kSurface surface
#define kStrength mapStrength
#else
FLAT(16) vec3 kSkyX;  // how the sky's light changes as the normal bends
FLAT(17) vec3 kSkyY;
FLAT(18) vec3 kSkyZ;
FLAT(19) vec4 kMultiply;
FLAT(20) vec4 kEmission;
FLAT(21) vec4 kSurface;
FLAT(22) vec4 kStrength;
#endif
