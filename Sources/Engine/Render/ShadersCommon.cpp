#include "Engine/Render/Shaders.h"

namespace gull::shaders {

const std::string_view common = R"glsl(
layout(std140) uniform Frame {
    mat4 viewProjection;
    mat4 inverseViewProjection;
    mat4 sunMatrix;
    mat4 movingSunMatrix;
    vec4 eye;
    vec4 sunDirection;
    vec4 sunColour;
    vec4 sunShape;
    vec4 movingShape;
    vec4 ambient;
    vec4 irradiance[9];
    vec4 fogColour;
    vec4 fogRange;
    vec4 picture;
    vec4 lens;
    vec4 tile;
    vec4 grade;
    vec4 vignette;
    vec4 lampPosition[8];
    vec4 lampColour[8];
    vec4 lampRange[8];
};

float luminance(vec3 c) { return dot(c, vec3(0.2126, 0.7152, 0.0722)); }

// sRGB's curve within 0.4 % by three square roots: far cheaper than pow on a CPU.
vec3 encoded(vec3 c) {
    vec3 s1 = sqrt(max(c, vec3(0.0)));
    vec3 s2 = sqrt(s1);
    vec3 s3 = sqrt(s2);
    return max(0.585122381 * s1 + 0.783140355 * s2 - 0.368262736 * s3, vec3(0.0));
}

// A filmic curve with a soft toe and a long shoulder: x (a x + b) / (x (c x + d) + e).
vec3 film(vec3 x) { return clamp(x * (2.51 * x + 0.03) / (x * (2.43 * x + 0.59) + 0.14), 0.0, 1.0); }

// Darkening toward the corners; `at` in 0..1 across the picture, the corners count as distance 1.
float vignetteAt(vec2 at) {
    vec2 d = at * 2.0 - 1.0;
    return 1.0 - vignette.x * pow(clamp(dot(d, d) * 0.5, 0.0, 1.0), vignette.y);
}

// Even noise, half a step of 8 bits either way, from the pixel's place: breaks up bands.
float dither(vec2 pixel) {
    return (fract(52.9829189 * fract(dot(floor(pixel), vec2(0.06711056, 0.00583715)))) - 0.5) / 255.0;
}

// Scene light to what the screen is sent. `pixel` counts in the whole picture.
vec3 developed(vec3 light, vec2 pixel) {
    vec3 c = max(light, vec3(0.0)) * eye.w;
#ifndef PLAIN_FILM
    c *= vignetteAt(pixel * picture.zw) * vignette.z;
    float l = max(luminance(c), 1e-4);
    vec3 each = film(c);
    vec3 kept = c * (film(vec3(l)).x / l);
    c = mix(each, min(kept, vec3(1.0)), vignette.w);
    c = encoded(c);
    c = (c - 0.5) * (1.0 + grade.y) + 0.5;
    c = mix(vec3(luminance(c)), c, grade.z);
#else
    c = encoded(min(c, vec3(1.0)));
#endif
    return clamp(c + dither(pixel), 0.0, 1.0);
}

// Distance in front of the eye, along its axis, of a depth from 0 to 1.
float axisDistance(float depth) { return lens.w / (depth * 2.0 - 1.0 + lens.z); }

// Share of the fog's colour at a distance from the eye.
float fogAt(float range) {
    float f = clamp((range - fogRange.x) * fogRange.y, 0.0, 1.0);
    return f > 0.0 ? pow(f, fogColour.w) : 0.0;
}
)glsl";

const std::string_view fullScreen = R"glsl(
uniform float depth;
out vec2 st;
void main() {
    st = vec2(gl_VertexID == 1 ? 2.0 : 0.0, gl_VertexID == 2 ? 2.0 : 0.0);
    gl_Position = vec4(st * 2.0 - 1.0, depth, 1.0);
}
)glsl";

}  // namespace gull::shaders
