#include "colour.glsl"
#include "frameValues.glsl"
#include "softPower.glsl"

// A filmic curve with a soft toe and a long shoulder: x (a x + b) / (x (c x + d) + e).
vec3 toneCurve(vec3 x) { return clamp(x * (2.51 * x + 0.03) / (x * (2.43 * x + 0.59) + 0.14), 0.0, 1.0); }

// The curve over `c`, keeping a share of its hue that grows with its brightness, so that a low sun's glare stays as warm
// as the sun. Kept hues approach 0.9 in their strongest channel.
vec3 curved(vec3 c) {
    float l = max(luminance(c), 1e-4);
    float k = l * (2.51 * l + 0.03) / (l * (2.43 * l + 0.59) + 0.14);
    float most = max(max(c.r, c.g), max(c.b, 1e-4));
    float over = max(most * k / l - 0.8, 0.0);
    vec3 hueKept = c * min(k / l, (0.8 + over / (1.0 + 10.0 * over)) / most);
    return mix(toneCurve(c), hueKept, mix(kToneGain.w, 0.6, clamp(l - 0.5, 0.0, 1.0)));
}

// Darkening toward the corners. `at` is 0..1 across the picture; the corners count as distance 1.
float vignetteAt(vec2 at) {
    vec2 d = at * 2.0 - 1.0;
    return 1.0 - kVignette.x * softPower(min(dot(d, d) * 0.5, 1.0), kVignette.y);
}

// Uniform noise of half an 8-bit step either way, computed from the pixel's place, to break up banding.
float dither(vec2 pixel) {
    return (fract(52.9829189 * fract(dot(floor(pixel), vec2(0.06711056, 0.00583715)))) - 0.5) / 255.0;
}

// Rolls the brightest values off, so that only the very brightest light is shown at its full: 0.8 and less stay, 1 becomes
// 0.968, 1.04 (the most that contrast makes) 0.995.
vec3 shoulder(vec3 c) {
    vec3 over = max(c - 0.8, vec3(0.0));
    return c - over + over / (1.0 + 0.96 * over);
}
vec3 shoulderless(vec3 c) {
    vec3 over = min(max(c - 0.8, vec3(0.0)), vec3(0.2));
    return min(c, vec3(0.8)) + over / (1.0 - 0.96 * over);
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
    c = encoded(curved(c));
    c = (c - 0.5) * (1.0 + kPicture.w) + 0.5;
    c = shoulder(mix(vec3(luminance(c)), c, kGrade.x));
    return clamp(c + dither(pixel), 0.0, 1.0);
#endif
}

// What the tone curve gives where the picture shows `shown`.
vec3 ungraded(vec3 shown) {
    vec3 c = shoulderless(shown);
    c = vec3(luminance(c)) + (c - luminance(c)) / kGrade.x;
    return decoded(clamp((c - 0.5) / (1.0 + kPicture.w) + 0.5, 0.0, 0.999));
}
vec3 inverseToneCurve(vec3 c) {
    vec3 a = 2.51 - 2.43 * c, b = 0.59 * c - 0.03;
    return (b + sqrt(b * b + 0.56 * a * c)) / (2.0 * a);
}

// The exposed light whose tone-mapped value is `shown`, ignoring hue preservation. toneMappedPerChannel() is
// the inverse.
vec3 inverseToneMapped(vec3 shown) {
#ifndef NO_TONE_MAPPING
    return inverseToneCurve(ungraded(shown));
#else
    return decoded(shown);
#endif
}
vec3 toneMappedPerChannel(vec3 c) {
#ifndef NO_TONE_MAPPING
    c = (encoded(toneCurve(c)) - 0.5) * (1.0 + kPicture.w) + 0.5;
    return shoulder(mix(vec3(luminance(c)), c, kGrade.x));
#else
    return encoded(min(c, vec3(1.0)));
#endif
}

// What is unlit is shown in its own colour, whatever the camera makes of light. Above 1 it is as bright as the screen
// can be, of the same hue.
vec3 unlitColour(vec3 light) { return encoded(light / max(1.0, max(light.r, max(light.g, light.b)))); }
// The same with fog in front of it.
vec3 unlitShown(vec3 light, float fog, vec2 pixel) {
#ifdef NO_TONE_MAPPING
    return encoded(mix(min(light, vec3(1.0)), kFog.rgb, fog));
#endif
    vec3 c = unlitColour(light);
    return fog > 0.0 ? mix(c, toneMapped(kFog.rgb, pixel), fog) : c;
}
// The same for what adds its light, to be blended over the picture. It covers as much of it as it is bright: so its hue
// is seen on sunlit sand as at dusk, where a plain sum would be white.
vec4 unlitGlow(vec3 light, float share) {
    vec3 c = unlitColour(light) * share;
    return vec4(c, max(c.r, max(c.g, c.b)));
}
// The scene light that tone mapping shows as that colour, or nearly, if it is very bright: the curve is inverted channel
// by channel, then corrected for the hue that it keeps. `toneMapping`: 0 where the camera has none.
vec3 unlitLight(vec3 light, float toneMapping, vec2 pixel) {
    vec3 wanted = ungraded(unlitColour(light)), aim = wanted, c = inverseToneCurve(aim);
    for (int i = 0; i < 8; ++i) {
        aim = clamp(aim + wanted - curved(c), 0.0, 0.999);
        c = inverseToneCurve(aim);
    }
    c /= vignetteAt(pixel * kPicture.xy) * kToneGain.rgb;
    return mix(light, c, toneMapping) / kPicture.z;
}
