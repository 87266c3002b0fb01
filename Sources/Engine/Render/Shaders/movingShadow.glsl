#include "frameValues.glsl"

// What is left of the light where moving things cover the sun so far. `shade`: share of the light that is not
// the sun's; w: how far resting things cover it.
vec3 gainUnder(vec4 shade, float moving) {
    float before = 1.0 - kSun.w * shade.a;
    float now = 1.0 - kSun.w * max(shade.a, moving);
    return shade.rgb + (1.0 - shade.rgb) * (now / before);
}
