#include "colour.glsl"
#include "frameValues.glsl"
#include "softPower.glsl"

// A filmic curve with a soft toe and a long shoulder: x (a x + b) / (x (c x + d) + e).
vec3 toneCurve(vec3 x) { return clamp(x * (2.51 * x + 0.03) / (x * (2.43 * x + 0.59) + 0.14), 0.0, 1.0); }

// Darkening toward the corners. `at` is 0..1 across the picture; the corners count as distance 1.
float vignetteAt(vec2 at) {
    vec2 d = at * 2.0 - 1.0;
    return 1.0 - kVignette.x * softPower(min(dot(d, d) * 0.5, 1.0), kVignette.y);
}

// Uniform noise of half an 8-bit step either way, computed from the pixel's place, to break up banding.
float dither(vec2 pixel) {
    return (fract(52.9829189 * fract(dot(floor(pixel), vec2(0.06711056, 0.00583715)))) - 0.5) / 255.0;
}

// Scene light to display values, for cameras without tone mapping. `pixel` counts in the whole picture.
vec3 encodedOnly(vec3 light, vec2 pixel) {
    return clamp(encoded(clamp(light * kPicture.z, 0.0, 1.0)) + dither(pixel), 0.0, 1.0);
}

// The same with the tone curve, if the camera has one.
vec3 toneMapped(vec3 light, vec2 pixel) {
#ifdef NO_TONE_MAPPING
    return encodedOnly(light, pixel);
#else
    vec3 c = max(light, vec3(0.0)) * kPicture.z;
    c *= vignetteAt(pixel * kPicture.xy) * kToneGain.rgb;
    float l = max(luminance(c), 1e-4);
    float k = l * (2.51 * l + 0.03) / (l * (2.43 * l + 0.59) + 0.14);
    vec3 hueKept = c * min(k / l, 1.0 / max(max(c.r, c.g), max(c.b, 1e-4)));
    c = mix(toneCurve(c), hueKept, kToneGain.w);
    c = encoded(c);
    c = (c - 0.5) * (1.0 + kPicture.w) + 0.5;
    c = mix(vec3(luminance(c)), c, kGrade.x);
    return clamp(c + dither(pixel), 0.0, 1.0);
#endif
}

// The exposed light whose tone-mapped value is `shown`, ignoring hue preservation. toneMappedPerChannel() is
// the inverse.
vec3 inverseToneMapped(vec3 shown) {
#ifndef NO_TONE_MAPPING
    vec3 c = vec3(luminance(shown)) + (shown - luminance(shown)) / kGrade.x;
    c = decoded(clamp((c - 0.5) / (1.0 + kPicture.w) + 0.5, 0.0, 0.999));
    vec3 a = 2.51 - 2.43 * c, b = 0.59 * c - 0.03;
    return (b + sqrt(b * b + 0.56 * a * c)) / (2.0 * a);
#else
    return decoded(shown);
#endif
}
vec3 toneMappedPerChannel(vec3 c) {
#ifndef NO_TONE_MAPPING
    c = (encoded(toneCurve(c)) - 0.5) * (1.0 + kPicture.w) + 0.5;
    return mix(vec3(luminance(c)), c, kGrade.x);
#else
    return encoded(min(c, vec3(1.0)));
#endif
}
