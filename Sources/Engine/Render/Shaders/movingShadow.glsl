#include "frameValues.glsl"

// The share of the light left when moving things cover the sun by `moving`. `shade`: share of the light that
// does not come from the sun; w: how far still things cover the sun.
vec3 gainUnder(vec4 shade, float moving) {
    float before = 1.0 - kSun.w * shade.a;
    float now = 1.0 - kSun.w * max(shade.a, moving);
    return shade.rgb + (1.0 - shade.rgb) * (now / before);
}
