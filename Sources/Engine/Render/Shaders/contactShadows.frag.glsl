// How much of the sky above a point its surroundings hide, from the depth of the picture alone. Each of
// twelve taps on a spiral adds (n . d - bias) / |d|^2, fading to nothing at the radius. The spiral is turned
// by one of sixteen angles in a 4 x 4 pattern, which the blur averages out. Uniforms count the loops so that
// they stay loops: unrolled, they take longer to compile than to run.
#include "compiledOnce.glsl"
#include "depth.glsl"
#include "screen.glsl"

uniform sampler2D staticDepth;
uniform vec4 reach;    // x: radius, y: radius in picture heights at distance 1, z: strength, w: 1 / aspect
uniform int tapCount;
out vec4 outColour;

// The point of the texel that the depth comes from: half a texel off, slopes would hide themselves.
vec3 viewPoint(vec2 at) {
    at = (floor(at / kPicture.xy) + 0.5) * kPicture.xy;
    float range = axisDistance(textureLod(staticDepth, at, 0.0).r);
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
    for (int i = 0; i < tapCount; ++i) {
        float share = (float(i) + 0.5) / float(tapCount);
        float angle = turn + float(i) * 2.39996323;
        vec2 at = st + vec2(cos(angle) * reach.w, sin(angle)) * (share * pixels);
        vec3 d = viewPoint(at) - p;
        float dd = dot(d, d);
        float fade = max(1.0 - dd / limit, 0.0);
        sum += max(dot(n, d) + p.z * 0.002, 0.0) / (dd + 0.004) * fade * fade * sqrt(dd);
    }
    float open = clamp(1.0 - sum * 2.0 / float(tapCount), 0.0, 1.0);
    outColour = vec4(pow(open, reach.z));
}
