// How much of the light of sky and ground arrives at a point (128 of 255: as much as where nothing hides any), and
// how much of the sky what stands near by leaves open (alpha). The latter is found from the depth of the picture alone.
// Each of twelve taps on a spiral adds (n . d - bias) / |d|^2, fading to nothing at the radius. The spiral is turned
// by one of sixteen angles in a 4 x 4 pattern, which the blur averages out. Uniforms count the loops so that
// they stay loops: unrolled, they take longer to compile than to run.
#include "compiledOnce.glsl"
#include "depth.glsl"
#include "screen.glsl"
#include "skyLight.glsl"

uniform sampler2D staticDepth;
uniform vec4 reach;    // x: radius, y: radius in picture heights at distance 1, z: strength, w: 1 / aspect
uniform int tapCount;
uniform mat3 eyeTurn;       // view to world
uniform float skyExponent;  // on the open share, of the sky's light
out vec4 outColour;

// The point in the middle of a pixel of the depth.
vec3 viewPoint(ivec2 pixel) {
    pixel = clamp(pixel, ivec2(0), textureSize(staticDepth, 0) - 1);
    float range = axisDistance(texelFetch(staticDepth, pixel, 0).r);
    return vec3(((vec2(pixel) + 0.5) * kPicture.xy * 2.0 - 1.0) * frame.lens.xy, -1.0) * range;
}

void main() {
    COMPILED_ONCE;
    // With neighbours on all sides.
    ivec2 here = clamp(2 * ivec2(gl_FragCoord.xy), ivec2(1), textureSize(staticDepth, 0) - 2);
    vec3 p = viewPoint(here);
    vec3 right = viewPoint(here + ivec2(1, 0)) - p, left = p - viewPoint(here - ivec2(1, 0));
    vec3 up = viewPoint(here + ivec2(0, 1)) - p, down = p - viewPoint(here - ivec2(0, 1));
    vec3 n = normalize(cross(abs(right.z) < abs(left.z) ? right : left, abs(up.z) < abs(down.z) ? up : down));

    ivec2 cell = ivec2(gl_FragCoord.xy) & 3;
    float turn = float((cell.x * 4 + cell.y) * 7 & 15) * (6.28318531 / 16.0);
    float pixels = reach.y / -p.z;
    float limit = reach.x * reach.x;
    float sum = 0.0;
    for (int i = 0; i < tapCount; ++i) {
        float share = (float(i) + 0.5) / float(tapCount);
        float angle = turn + float(i) * 2.39996323;
        vec2 away = vec2(cos(angle) * reach.w, sin(angle)) * (share * pixels);
        vec3 d = viewPoint(here + ivec2(floor(away / kPicture.xy + 0.5))) - p;
        float dd = dot(d, d);
        float fade = max(1.0 - dd / limit, 0.0);
        sum += max(dot(n, d) + p.z * 0.002, 0.0) / (dd + 0.004) * fade * fade * sqrt(dd);
    }
    float open = clamp(1.0 - sum * 2.0 / float(tapCount), 0.0, 1.0);
    open = pow(open, reach.z);
    mat3 turned = mat3(eyeTurn);
    float slant = turn + 0.4;
    vec3 worldNormal = turned * n;
    vec3 light = skyLightAt(frame.eye.xyz + turned * p, worldNormal, vec2(cos(slant), sin(slant)));
    vec3 share = light / max(openLight(worldNormal), vec3(1e-3)) * pow(open, skyExponent);
    outColour = vec4(share * (128.0 / 255.0), open);
}
