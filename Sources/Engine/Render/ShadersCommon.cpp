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
    vec4 film;
    vec4 vignette;
    vec4 lampPlace[4];
    vec4 lampLight[4];
    vec4 lampExponents;
} frame;

#ifdef VERTEX
out gl_PerVertex { vec4 gl_Position; };
#endif

// Never discards, but a software rasteriser cannot know: it compiles a pass without blending, depth or this twice,
// the second time for blocks that are covered as a whole, which gains less than compiling takes.
#define COMPILED_ONCE \
    if (gl_FragCoord.x < 0.0) discard

// Shaders are linked one by one: what passes from one to the other meets by its location. 0 to 8 and 23 to 31 are
// here, each body has those between.

// What every pixel needs comes to it as flat varyings: on a rasteriser in software a uniform costs each pixel
// several times as much. Varyings cost each triangle instead, so that things of many small ones read uniforms.
#ifdef SMALL
#define kFilm frame.film
#define kVignette frame.vignette
#define kPicture vec4(frame.picture.zw, frame.eye.w, frame.grade.y)
#define kGrade vec4(frame.grade.zw, frame.fogRange.xy)
#define kFog frame.fogColour
#define kEye vec4(frame.eye.xyz, frame.fogRange.z)
#define kTile vec4(frame.tile.xy, frame.lens.zw)
#define kSun frame.sunDirection
#define kSunColour frame.sunColour
#define kLampPlace frame.lampPlace
#define kLampLight frame.lampLight
#define kLampExponents frame.lampExponents
#else
#ifdef VERTEX
#define PASSED flat out
#else
#define PASSED flat in
#endif
layout(location = 0) PASSED vec4 kFilm;       // gain of each channel, hue keeping
layout(location = 1) PASSED vec4 kVignette;   // intensity, power; gap of wide shadow edges, cast of mirrored skies
layout(location = 2) PASSED vec4 kPicture;    // 1 / width, 1 / height, exposure, contrast
layout(location = 3) PASSED vec4 kGrade;      // saturation, bloom intensity, fog start, 1 / fog length
layout(location = 4) PASSED vec4 kFog;        // colour, exponent
layout(location = 5) PASSED vec4 kEye;        // position, intensity of the environment
layout(location = 6) PASSED vec4 kTile;       // xy: origin of the tile; zw: lens, see axisDistance
layout(location = 7) PASSED vec4 kSun;        // direction toward it, blackness of its shadow
layout(location = 8) PASSED vec4 kSunColour;  // colour, edge radius of its shadow
#ifdef LAMPS
layout(location = 23) PASSED vec4 kLampPlace[LAMPS];
layout(location = 27) PASSED vec4 kLampLight[LAMPS];
layout(location = 31) PASSED vec4 kLampExponents;
#endif
#endif

#ifdef VERTEX
void passFrame() {
#ifndef SMALL
    kFilm = frame.film;
    kVignette = frame.vignette;
    kPicture = vec4(frame.picture.zw, frame.eye.w, frame.grade.y);
    kGrade = vec4(frame.grade.zw, frame.fogRange.xy);
    kFog = frame.fogColour;
    kEye = vec4(frame.eye.xyz, frame.fogRange.z);
    kTile = vec4(frame.tile.xy, frame.lens.zw);
    kSun = frame.sunDirection;
    kSunColour = frame.sunColour;
#ifdef LAMPS
    for (int i = 0; i < LAMPS; ++i) {
        kLampPlace[i] = frame.lampPlace[i];
        kLampLight[i] = frame.lampLight[i];
    }
    kLampExponents = frame.lampExponents;
#endif
#endif
}
#endif

#if !defined(VERTEX) || defined(MATT)
float luminance(vec3 c) { return dot(c, vec3(0.2126, 0.7152, 0.0722)); }

// sRGB's curve within 0.4 % by three square roots: far cheaper than pow on a CPU.
vec3 encoded(vec3 c) {
    vec3 s1 = sqrt(max(c, vec3(0.0)));
    vec3 s2 = sqrt(s1);
    vec3 s3 = sqrt(s2);
    return max(0.585122381 * s1 + 0.783140355 * s2 - 0.368262736 * s3, vec3(0.0));
}

// sRGB to linear within 0.1 %; colour textures are filtered as they are stored and made linear after.
vec3 decoded(vec3 c) { return c * (c * (c * 0.305306011 + 0.682171111) + 0.012522878); }

// x to a power from 1 to 2, x from 0 to 1: exact at both ends of the range, within 0.03 between.
float softPower(float x, float power) { return x * (1.0 + (power - 1.0) * (x - 1.0)); }

// A filmic curve with a soft toe and a long shoulder: x (a x + b) / (x (c x + d) + e).
vec3 film(vec3 x) { return clamp(x * (2.51 * x + 0.03) / (x * (2.43 * x + 0.59) + 0.14), 0.0, 1.0); }

// Darkening toward the corners; `at` in 0..1 across the picture, the corners count as distance 1.
float vignetteAt(vec2 at) {
    vec2 d = at * 2.0 - 1.0;
    return 1.0 - kVignette.x * softPower(min(dot(d, d) * 0.5, 1.0), kVignette.y);
}

// Even noise, half a step of 8 bits either way, from the pixel's place: breaks up bands.
float dither(vec2 pixel) {
    return (fract(52.9829189 * fract(dot(floor(pixel), vec2(0.06711056, 0.00583715)))) - 0.5) / 255.0;
}

// Scene light to what the screen is sent, for cameras without a film. `pixel` counts in the whole picture.
vec3 plainlyDeveloped(vec3 light, vec2 pixel) {
    return clamp(encoded(clamp(light * kPicture.z, 0.0, 1.0)) + dither(pixel), 0.0, 1.0);
}

// The same with the film, where the camera has one.
vec3 developed(vec3 light, vec2 pixel) {
#ifdef PLAIN_FILM
    return plainlyDeveloped(light, pixel);
#else
    vec3 c = max(light, vec3(0.0)) * kPicture.z;
    c *= vignetteAt(pixel * kPicture.xy) * kFilm.rgb;
    float l = max(luminance(c), 1e-4);
    float k = l * (2.51 * l + 0.03) / (l * (2.43 * l + 0.59) + 0.14);
    vec3 kept = c * min(k / l, 1.0 / max(max(c.r, c.g), max(c.b, 1e-4)));
    c = mix(film(c), kept, kFilm.w);
    c = encoded(c);
    c = (c - 0.5) * (1.0 + kPicture.w) + 0.5;
    c = mix(vec3(luminance(c)), c, kGrade.x);
    return clamp(c + dither(pixel), 0.0, 1.0);
#endif
}

// The exposed light that the film shows as `shown`, its hue keeping left out; shownAgain() is the inverse.
vec3 exposed(vec3 shown) {
#ifndef PLAIN_FILM
    vec3 c = vec3(luminance(shown)) + (shown - luminance(shown)) / kGrade.x;
    c = decoded(clamp((c - 0.5) / (1.0 + kPicture.w) + 0.5, 0.0, 0.999));
    vec3 a = 2.51 - 2.43 * c, b = 0.59 * c - 0.03;
    return (b + sqrt(b * b + 0.56 * a * c)) / (2.0 * a);
#else
    return decoded(shown);
#endif
}
vec3 shownAgain(vec3 c) {
#ifndef PLAIN_FILM
    c = (encoded(film(c)) - 0.5) * (1.0 + kPicture.w) + 0.5;
    return mix(vec3(luminance(c)), c, kGrade.x);
#else
    return encoded(min(c, vec3(1.0)));
#endif
}

// Distance in front of the eye, along its axis, of a depth from 0 to 1.
float axisDistance(float depth) { return kTile.w / (depth * 2.0 - 1.0 + kTile.z); }

// Share of the fog's colour at a distance from the eye.
float fogAt(float range) { return softPower(clamp((range - kGrade.z) * kGrade.w, 0.0, 1.0), kFog.w); }
#endif
)glsl";

const std::string_view fullScreen = R"glsl(
uniform float depth;
layout(location = 9) out vec2 st;
void main() {
    passFrame();
    st = vec2(gl_VertexID == 1 ? 2.0 : 0.0, gl_VertexID == 2 ? 2.0 : 0.0);
    gl_Position = vec4(st * 2.0 - 1.0, depth, 1.0);
}
)glsl";

const std::string_view relightVertex = R"glsl(
#ifdef IN_RECTANGLES
layout(location = 0) in vec2 pixel;
#endif
// Where the pixel's ray goes per unit of distance along the camera's axis, in the world and in the moving
// shadow map: a point is then one multiplication away from its depth.
layout(location = 9) out vec2 st;
layout(location = 10) out vec3 ray;
layout(location = 11) out vec3 shadowRay;
layout(location = 12) flat out vec3 shadowEye;
layout(location = 13) flat out vec4 kMoving;
void main() {
    passFrame();
#ifdef IN_RECTANGLES
    st = pixel * frame.picture.zw;
#else
    st = vec2(gl_VertexID == 1 ? 2.0 : 0.0, gl_VertexID == 2 ? 2.0 : 0.0);
#endif
    vec4 far = frame.inverseViewProjection * vec4(st * 2.0 - 1.0, 1.0, 1.0);
    float along = frame.lens.w / (1.0 + frame.lens.z);
    ray = (far.xyz / far.w - frame.eye.xyz) / along;
    shadowRay = mat3(frame.movingSunMatrix) * ray;
    shadowEye = (frame.movingSunMatrix * vec4(frame.eye.xyz, 1.0)).xyz;
    kMoving = frame.movingShape;
    gl_Position = vec4(st * 2.0 - 1.0, 0.0, 1.0);
}
)glsl";

}  // namespace gull::shaders
