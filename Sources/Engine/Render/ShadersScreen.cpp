#include "Engine/Render/Shaders.h"

namespace gull::shaders {

const std::string_view skyFragment = R"glsl(
layout(location = 9) in vec2 st;
uniform sampler2D diffuseMap;  // equirectangular: u follows the azimuth, the middle is -z; v = 1 is up
layout(location = 0) out vec4 outColour;
#ifdef OUT_KEPT
layout(location = 1) out vec4 outShade;
layout(location = 2) out vec4 outSurface;
layout(location = 3) out vec4 outNormal;
#endif
void main() {
    vec2 ndc = (gl_FragCoord.xy + kTile.xy) * kPicture.xy * 2.0 - 1.0;
    vec4 far = frame.inverseViewProjection * vec4(ndc, 1.0, 1.0);
    vec4 near = frame.inverseViewProjection * vec4(ndc, -1.0, 1.0);
    vec3 d = normalize(far.xyz / far.w - near.xyz / near.w);
    vec2 at = vec2(atan(d.x, -d.z) / 6.28318531 + 0.5, asin(clamp(d.y, -1.0, 1.0)) / 3.14159265 + 0.5);
    vec3 c = decoded(textureLod(diffuseMap, at, 0.0).rgb);
#ifdef OUT_DISPLAY
    c = developed(c, gl_FragCoord.xy);
#endif
    outColour = vec4(c, 1.0);
#ifdef OUT_KEPT
    outShade = vec4(1.0, 1.0, 1.0, 0.0);
    outSurface = vec4(0.0);
    outNormal = vec4(0.5, 1.0, 0.5, 1.0);
#endif
}
)glsl";

const std::string_view particleVertex = R"glsl(
layout(location = 0) in vec3 inPosition;
layout(location = 2) in vec2 inUv0;
layout(location = 4) in vec4 inColour;
layout(location = 9) out vec2 at;
layout(location = 10) out vec4 colour;
layout(location = 11) out float range;
void main() {
    passFrame();
    gl_Position = frame.viewProjection * vec4(inPosition, 1.0);
    at = inUv0;
    colour = inColour;
    range = distance(frame.eye.xyz, inPosition);
}
)glsl";

const std::string_view particleFragment = R"glsl(
layout(location = 9) in vec2 at;
layout(location = 10) in vec4 colour;
layout(location = 11) in float range;
uniform sampler2D diffuseMap;
out vec4 outColour;
void main() {
    vec4 c = texture(diffuseMap, at);
    c = vec4(decoded(c.rgb), c.a) * colour;
    float fog = fogAt(range);
#ifdef ADDED
    vec3 light = c.rgb * (c.a * (1.0 - fog));
#ifdef OUT_DISPLAY
    light = encoded(light) * 0.3;
#endif
    outColour = vec4(light, 0.0);
#else
    vec3 light = mix(c.rgb, kFog.rgb, fog);
#ifdef OUT_DISPLAY
    light = developed(light, gl_FragCoord.xy);
#endif
    outColour = vec4(light * c.a, c.a);
#endif
}
)glsl";

// How much of the sky above a point its surroundings hide, from the depth of the picture alone. Each of
// twelve looks on a spiral adds (n . d - bias) / |d|^2, fading to nothing at the radius; the spiral is turned
// by one of sixteen angles in a 4 x 4 pattern that the blur averages out again. Loops are counted by uniforms
// here, so that they stay loops: unrolled they take longer to compile than to run.
const std::string_view occlusionFragment = R"glsl(
layout(location = 9) in vec2 st;
uniform sampler2D keptDepth;
uniform vec4 reach;    // x: radius, y: radius in picture heights at distance 1, z: strength, w: 1 / aspect
uniform int looks;
out vec4 outColour;

// The point belongs to the texel that the depth comes from: half a texel beside it, slopes would hide themselves.
vec3 viewPoint(vec2 at) {
    at = (floor(at / kPicture.xy) + 0.5) * kPicture.xy;
    float range = axisDistance(textureLod(keptDepth, at, 0.0).r);
    return vec3((at * 2.0 - 1.0) * frame.lens.xy, -1.0) * range;
}

void main() {
    COMPILED_ONCE;
    vec3 p = viewPoint(st);
    vec2 step_ = kPicture.xy;
    vec3 right = viewPoint(st + vec2(step_.x, 0.0)) - p, left = p - viewPoint(st - vec2(step_.x, 0.0));
    vec3 up = viewPoint(st + vec2(0.0, step_.y)) - p, down = p - viewPoint(st - vec2(0.0, step_.y));
    vec3 n = normalize(cross(abs(right.z) < abs(left.z) ? right : left, abs(up.z) < abs(down.z) ? up : down));

    ivec2 cell = ivec2(gl_FragCoord.xy) & 3;
    float turn = float((cell.x * 4 + cell.y) * 7 & 15) * (6.28318531 / 16.0);
    float pixels = reach.y / -p.z;
    float limit = reach.x * reach.x;
    float sum = 0.0;
    for (int i = 0; i < looks; ++i) {
        float share = (float(i) + 0.5) / float(looks);
        float angle = turn + float(i) * 2.39996323;
        vec2 at = st + vec2(cos(angle) * reach.w, sin(angle)) * (share * pixels);
        vec3 d = viewPoint(at) - p;
        float dd = dot(d, d);
        float fade = max(1.0 - dd / limit, 0.0);
        sum += max(dot(n, d) + p.z * 0.002, 0.0) / (dd + 0.004) * fade * fade * sqrt(dd);
    }
    float open = clamp(1.0 - sum * 2.0 / float(looks), 0.0, 1.0);
    outColour = vec4(pow(open, reach.z));
}
)glsl";

const std::string_view occlusionBlurFragment = R"glsl(
layout(location = 9) in vec2 st;
uniform sampler2D source;
uniform sampler2D keptDepth;
uniform vec2 texel;    // of the source
uniform int rows;      // of four texels each that are averaged: 4
out vec4 outColour;
float range(vec2 at) { return axisDistance(textureLod(keptDepth, at, 0.0).r); }
void main() {
    COMPILED_ONCE;
    float here = range(st);
    vec2 sum = vec2(0.0);
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < 4; ++x) {
            vec2 at = st + (vec2(float(x), float(y)) - 1.5) * texel;
            float weight = max(1.0 - abs(range(at) - here) * 4.0 / max(abs(here) * 0.1, 0.2), 0.001);
            sum += vec2(textureLod(source, at, 0.0).r, 1.0) * weight;
        }
    outColour = vec4(sum.x / sum.y);
}
)glsl";

// A quarter of the size, and only what is brighter than the threshold.
const std::string_view brightFragment = R"glsl(
layout(location = 9) in vec2 st;
uniform sampler2D source;
uniform vec2 texel;      // of the source
uniform float threshold;
out vec4 outColour;
void main() {
    COMPILED_ONCE;
    vec3 sum = vec3(0.0);
    for (int i = 0; i < 4; ++i) {
        vec2 at = st + (vec2(float(i & 1), float(i >> 1)) * 2.0 - 1.0) * texel;
        vec3 c = max(textureLod(source, at, 0.0).rgb * kPicture.z, vec3(0.0));
        float l = max(max(c.r, c.g), max(c.b, 1e-4));
        // A knee instead of an edge, and no single pixel counts for more than a few.
        float over = clamp(l - threshold + 0.2, 0.0, 0.4);
        sum += c * (max(over * over / 0.8, l - threshold) / l) * min(1.0, 4.0 / l);
    }
    outColour = vec4(sum * 0.25 / kPicture.z, 1.0);
}
)glsl";

const std::string_view blurFragment = R"glsl(
layout(location = 9) in vec2 st;
uniform sampler2D source;
uniform vec2 step_;      // from tap to tap
out vec4 outColour;
void main() {
    COMPILED_ONCE;
    // Half of a Gaussian, weights of 9 taps two sigma wide.
    const float weight[5] = float[](0.2042, 0.1802, 0.1238, 0.0663, 0.0276);
    vec3 sum = textureLod(source, st, 0.0).rgb * weight[0];
    for (int i = 1; i < 5; ++i) {
        sum += textureLod(source, st + step_ * float(i), 0.0).rgb * weight[i];
        sum += textureLod(source, st - step_ * float(i), 0.0).rgb * weight[i];
    }
    outColour = vec4(sum, 1.0);
}
)glsl";

const std::string_view gradeFragment = R"glsl(
layout(location = 9) in vec2 st;
uniform sampler2D source;
uniform sampler2D bloom;
uniform sampler2D keptPaint;
uniform float plain;  // 1: for a camera without a film
out vec4 outColour;
void main() {
    COMPILED_ONCE;
    vec4 c = textureLod(source, st, 0.0);
    vec3 light = c.a > 0.0 ? c.rgb / c.a : c.rgb;
    vec3 paint = textureLod(keptPaint, st, 0.0).rgb;
    light = light * paint * paint + textureLod(bloom, st, 0.0).rgb * kGrade.y;
    vec2 pixel = gl_FragCoord.xy + kTile.xy;
    outColour = vec4(mix(developed(light, pixel), plainlyDeveloped(light, pixel), plain) * c.a, c.a);
}
)glsl";

// The mean of four samples a pixel.
const std::string_view resolveFragment = R"glsl(
uniform sampler2DMS source;
uniform vec2 shift;
out vec4 outColour;
void main() {
    ivec2 pixel = ivec2(gl_FragCoord.xy - shift);
    outColour = 0.25 * (texelFetch(source, pixel, 0) + texelFetch(source, pixel, 1) +
                        texelFetch(source, pixel, 2) + texelFetch(source, pixel, 3));
}
)glsl";

// Sheets that lie on the picture: rectangles of plain colours (WASH) or of a bitmap. All four values are
// passed: where they are not, llvmpipe does not know its linear path.
const std::string_view sheetVertex = R"glsl(
layout(location = 0) in vec2 inPosition;
layout(location = 1) in vec4 inValue;
layout(location = 9) out vec4 value;
void main() {
    value = inValue;
    gl_Position = vec4(inPosition, 0.0, 1.0);
}
)glsl";

const std::string_view sheetFragment = R"glsl(
layout(location = 9) in vec4 value;  // the colour; xy: a place in the bitmap
uniform sampler2D source;
uniform float opacity;
out vec4 outColour;
void main() {
#ifdef WASH
    outColour = value;
#elif defined(FADED)
    outColour = texture(source, value.xy) * opacity;
#else
    outColour = texture(source, value.xy);
#endif
}
)glsl";

}  // namespace gull::shaders
