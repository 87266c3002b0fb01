#include "frameValues.glsl"
#include "softPower.glsl"

#ifdef LAMPS
// Full strength up to the start, then falling to nothing at the end with the lamp's exponent. xyz: toward the
// lamp, w: share of its strength.
vec4 lampAt(int i, vec3 p) {
    vec3 d = kLampPlace[i].xyz - p;
    float nearness = inversesqrt(max(dot(d, d), 1e-6));
    float left = clamp(kLampLight[i].w - kLampPlace[i].w / nearness, 0.0, 1.0);
    return vec4(d * nearness, softPower(left, kLampExponents[i]));
}

vec3 lampLight(vec3 p, vec3 n) {
    vec3 sum = vec3(0.0);
    for (int i = 0; i < LAMPS; ++i) {
        vec4 lamp = lampAt(i, p);
        sum += kLampLight[i].rgb * (lamp.w * max(dot(n, lamp.xyz), 0.0));
    }
    return sum;
}
#endif
