#include "Engine/Render/Shaders.h"

namespace gull::shaders {

const std::string_view lighting = R"glsl(
const vec2 taps[16] = vec2[](
    vec2(0.1768, 0.0000), vec2(-0.2258, 0.2069), vec2(0.0346, -0.3938), vec2(0.2848, 0.3711),
    vec2(-0.5223, -0.0932), vec2(0.4943, -0.3154), vec2(-0.1656, 0.6154), vec2(-0.3159, -0.6075),
    vec2(0.6848, 0.2493), vec2(-0.7124, 0.2945), vec2(0.3432, -0.7341), vec2(0.2555, 0.8085),
    vec2(-0.7650, -0.4430), vec2(0.8973, -0.1975), vec2(-0.5482, 0.7787), vec2(-0.1259, -0.9762));

// How far the sun is covered: 0 open, 1 in full shadow. Four wide looks first; only where they disagree
// (the edge) are the sixteen taken. A loop of length 0 is skipped even where branches are not.
float covered(sampler2DShadow map, mat4 toMap, vec3 p, vec3 n, float radius, float lift, float bias) {
    vec3 c = (toMap * vec4(p + n * lift, 1.0)).xyz;
    c.z -= bias;
    vec2 inside = step(vec2(0.0), c.xy) * step(c.xy, vec2(1.0));
    float wide = radius * 1.2;
    float first = texture(map, vec3(c.xy + vec2(wide, wide * 0.5), c.z)) +
                  texture(map, vec3(c.xy + vec2(-wide * 0.5, wide), c.z)) +
                  texture(map, vec3(c.xy + vec2(-wide, -wide * 0.5), c.z)) +
                  texture(map, vec3(c.xy + vec2(wide * 0.5, -wide), c.z));
    float open = first * 0.25;
    int count = (first > 0.01 && first < 3.99) ? 16 : 0;
    float sum = 0.0;
    for (int i = 0; i < count; ++i) sum += texture(map, vec3(c.xy + taps[i] * radius, c.z));
    if (count > 0) open = sum / 16.0;
    return (1.0 - open) * inside.x * inside.y;
}

// Full strength up to the start, then falling to nothing at the end with the lamp's exponent.
vec3 lampLight(vec3 p, vec3 n) {
    vec3 sum = vec3(0.0);
    int count = int(lampPosition[0].w);
    for (int i = 0; i < count; ++i) {
        vec3 d = lampPosition[i].xyz - p;
        float range = length(d);
        float left = clamp(1.0 - (range - lampRange[i].x) * lampRange[i].y, 0.0, 1.0);
        sum += lampColour[i].rgb * (pow(left, lampColour[i].w) * max(dot(n, d) / max(range, 1e-4), 0.0));
    }
    return sum;
}

// A film of liquid over the ground, premultiplied. It hides `alpha` of the ground at once and more with its
// thickness (Beer's law); what it mirrors does not fade with its clearness; its last finger's breadth at the
// water's edge runs out softly.
vec4 filmOver(vec3 within, float alpha, vec3 top, float mirror, float thickness, float density) {
    float clear = (1.0 - alpha) * exp2(-thickness * density);
    float edge = clamp(thickness * 8.0, 0.0, 1.0);
    return vec4(within * (1.0 - clear) * (1.0 - mirror) + top, 1.0 - clear * (1.0 - mirror)) * edge;
}
)glsl";

// Kept light with the moving layer's shadow and lamps on it. Where a resting shadow lies already the moving
// one adds nothing: the sun's part is scaled by the new cover over the old.
const std::string_view relightFragment = R"glsl(
uniform sampler2D keptLit;
uniform sampler2D keptShade;
uniform sampler2D keptDepth;
#ifdef LAMPS
uniform sampler2D keptSurface;
#endif
uniform sampler2D keptNormal;
#ifdef MOVING_SHADOW
uniform sampler2DShadow movingShadow;
#endif
#ifdef BLOOM
uniform sampler2D bloom;
#endif
layout(location = 0) out vec4 outColour;
#ifdef OUT_DISPLAY
layout(location = 1) out vec4 outLinear;
#endif
void main() {
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    float depth = texelFetch(keptDepth, pixel, 0).r;
    vec4 lit = texelFetch(keptLit, pixel, 0);
    vec2 at = gl_FragCoord.xy * picture.zw;
    vec3 light = lit.rgb;
#if defined(MOVING_SHADOW) || defined(LAMPS)
    vec4 w = inverseViewProjection * vec4(vec3(at, depth) * 2.0 - 1.0, 1.0);
    vec3 p = w.xyz / w.w;
    vec3 n = texelFetch(keptNormal, pixel, 0).xyz * 2.0 - 1.0;
#endif
#ifdef MOVING_SHADOW
    vec4 shade = texelFetch(keptShade, pixel, 0);
    float moving = covered(movingShadow, movingSunMatrix, p, n, movingShape.x, movingShape.y, movingShape.z);
    float before = 1.0 - sunDirection.w * shade.a;
    float now = 1.0 - sunDirection.w * max(shade.a, moving);
    light = shade.rgb + (lit.rgb - shade.rgb) * (now / before);
#endif
#ifdef LAMPS
    vec3 body = texelFetch(keptSurface, pixel, 0).rgb;
    light += body * body * lampLight(p, n);
#endif
#ifdef OUT_DISPLAY
    outLinear = vec4(light, lit.a);
#ifdef BLOOM
    light += textureLod(bloom, at, 0.0).rgb * grade.w;
#endif
    outColour = vec4(developed(light, gl_FragCoord.xy), lit.a);
#else
    outColour = vec4(light, lit.a);
    gl_FragDepth = depth;
#endif
}
)glsl";

// The sea's two halves of light, shaded at half resolution, over the ground at full resolution. Drawn with
// surfaceVertex on the sea's own geometry, so that its edges and depth are exact.
const std::string_view filmFragment = R"glsl(
in vec3 position;
uniform vec4 look;
uniform sampler2D source;      // light from within, at half resolution
uniform sampler2D keptShade;   // light mirrored
uniform sampler2D keptLit;     // what lies below, in scene light
uniform sampler2D keptDepth;
#ifdef BLOOM
uniform sampler2D bloom;
#endif
layout(location = 0) out vec4 outColour;
void main() {
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    vec2 at = gl_FragCoord.xy * picture.zw;
    float range = distance(eye.xyz, position);
    float ground = texelFetch(keptDepth, pixel, 0).r;
    float thickness = range * max(axisDistance(ground) / axisDistance(gl_FragCoord.z) - 1.0, 0.0);
    vec4 within = textureLod(source, at, 0.0);
    vec4 top = textureLod(keptShade, at, 0.0);
    vec4 film = filmOver(within.rgb, within.a, top.rgb, top.a, thickness, look.w);
    film.rgb = mix(film.rgb, fogColour.rgb * film.a, fogAt(range));
    vec3 light = texelFetch(keptLit, pixel, 0).rgb * (1.0 - film.a) + film.rgb;
#ifdef BLOOM
    light += textureLod(bloom, at, 0.0).rgb * grade.w;
#endif
    outColour = vec4(developed(light, gl_FragCoord.xy), 1.0);
}
)glsl";

const std::string_view farthestFragment = R"glsl(
uniform sampler2D keptDepth;
void main() {
    ivec2 last = textureSize(keptDepth, 0) - 1;
    ivec2 corner = ivec2(gl_FragCoord.xy) * 2 - 1;
    float farthest = 0.0;
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            farthest = max(farthest, texelFetch(keptDepth, clamp(corner + ivec2(x, y), ivec2(0), last), 0).r);
    gl_FragDepth = farthest;
}
)glsl";

const std::string_view warpFragment = R"glsl(
in vec2 st;
uniform sampler2D source;
uniform mat3 toSource;   // place in the window to place in the picture, both 0 to 1, homogeneous
uniform float share;     // opacity
out vec4 outColour;
void main() {
    vec3 from = toSource * vec3(st, 1.0);
    outColour = vec4(textureLod(source, clamp(from.xy / from.z, 0.0, 1.0), 0.0).rgb, 1.0) * share;
}
)glsl";

}  // namespace gull::shaders
