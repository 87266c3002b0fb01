#include "Engine/Render/Shaders.h"

namespace gull::shaders {

const std::string_view lighting = R"glsl(
const vec2 taps[16] = vec2[](
    vec2(0.1768, 0.0000), vec2(-0.2258, 0.2069), vec2(0.0346, -0.3938), vec2(0.2848, 0.3711),
    vec2(-0.5223, -0.0932), vec2(0.4943, -0.3154), vec2(-0.1656, 0.6154), vec2(-0.3159, -0.6075),
    vec2(0.6848, 0.2493), vec2(-0.7124, 0.2945), vec2(0.3432, -0.7341), vec2(0.2555, 0.8085),
    vec2(-0.7650, -0.4430), vec2(0.8973, -0.1975), vec2(-0.5482, 0.7787), vec2(-0.1259, -0.9762));

// How far the sun is covered at a place in a shadow map: 0 open, 1 in full shadow. Five wide looks first; only
// where they disagree (the edge) are more taken: whether what casts the shadow is farther than `gap` toward the
// sun, which widens the edge, and then across the edge. `least` is the narrowest edge that the picture can show.
// A loop of length 0 is skipped even where branches are not.
float covered(sampler2DShadow map, vec3 c, float radius, float gap, float least) {
    vec2 inside = step(vec2(0.0), c.xy) * step(c.xy, vec2(1.0));
    float widest = max(radius * 1.2, min(radius * 2.8, 9.0 / 4096.0));
    vec2 a = vec2(widest, widest * 0.5), b = vec2(-a.y, a.x);
    float first = texture(map, c) + texture(map, vec3(c.xy + a, c.z)) + texture(map, vec3(c.xy + b, c.z)) +
                  texture(map, vec3(c.xy - a, c.z)) + texture(map, vec3(c.xy - b, c.z));
    float open = first * 0.2;
#ifdef FEW_LOOKS
    const int looks = 8;
#else
    const int looks = 16;
#endif
    bool edge = first > 0.01 && first < 4.99;
    float near = 0.0;
    int count = edge && gap > 0.0 ? 4 : 0;
    for (int i = 0; i < count; ++i)
        near += texture(map, vec3(c.xy + (i < 2 ? a : b) * (1.0 - 2.0 * float(i & 1)), c.z - gap));
    float distant = count > 0 ? clamp((4.0 - near) / max(5.0 - first, 0.01), 0.0, 1.0) : 0.0;
    float reach = clamp(mix(radius, widest, distant), least, max(widest, radius));
    float sum = 0.0;
    count = edge ? looks : 0;
    for (int i = 0; i < count; ++i) sum += texture(map, vec3(c.xy + taps[i * 16 / looks] * reach, c.z));
    if (count > 0) open = sum / float(looks);
    return (1.0 - open) * inside.x * inside.y;
}

// The same from a single look, with an edge as narrow as the map's texels. Toward the map's border it runs out:
// beyond, where water and far sand still lie, nothing is known.
float coveredOnce(sampler2DShadow map, vec3 c) {
    vec2 margin = min(c.xy, 1.0 - c.xy);
    return (1.0 - texture(map, c)) * clamp(min(margin.x, margin.y) * 16.0, 0.0, 1.0);
}

#ifdef MOVING_SHADOW
// What is left of the light where moving things cover the sun so far. `shade`: share of the light that is not
// the sun's; w: how far resting things cover it.
vec3 gainUnder(vec4 shade, float moving) {
    float before = 1.0 - kSun.w * shade.a;
    float now = 1.0 - kSun.w * max(shade.a, moving);
    return shade.rgb + (1.0 - shade.rgb) * (now / before);
}
#endif

#ifdef LAMPS
// Full strength up to the start, then falling to nothing at the end with the lamp's exponent.
// xyz: toward the lamp, w: share of its strength.
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

// A film of liquid over the ground, premultiplied. `whole` is the light of bottomless water, `within` the part
// of it that comes from below the surface. The film hides `alpha` of the ground at once and more with its
// thickness (Beer's law); what it mirrors does not fade with its clearness; its last finger's breadth at the
// water's edge runs out softly.
vec4 filmOver(vec3 whole, vec3 within, float alpha, float mirror, float thickness, float density) {
    float clear = (1.0 - alpha) * exp2(-thickness * density);
    float edge = clamp(thickness * 8.0, 0.0, 1.0);
    return vec4(whole - within * clear, 1.0 - clear * (1.0 - mirror)) * edge;
}
)glsl";

// How far moving things cover the sun.
const std::string_view coverFragment = R"glsl(
uniform sampler2D keptDepth;
uniform sampler2DShadow movingShadow;
layout(location = 11) in vec3 shadowRay;
layout(location = 12) flat in vec3 shadowEye;
layout(location = 13) flat in vec4 kMoving;
layout(location = 0) out vec4 outColour;
void main() {
    vec3 c = shadowEye + shadowRay * axisDistance(texelFetch(keptDepth, ivec2(gl_FragCoord.xy), 0).r);
    outColour = vec4(covered(movingShadow, vec3(c.xy, c.z - kMoving.z), kMoving.x, 0.0, 0.0));
}
)glsl";

// The kept layer with the moving layer's shadow and lamps on it. Where a resting shadow lies already the
// moving one adds nothing: the sun's part is scaled by the new cover over the old.
const std::string_view relightFragment = R"glsl(
uniform sampler2D keptLit;
uniform sampler2D keptDepth;
#ifdef PAINT
uniform sampler2D keptPaint;
#endif
#ifdef MOVING_SHADOW
uniform sampler2D keptShade;
uniform sampler2D movingCover;
#endif
#ifdef LAMPS
uniform sampler2D keptSurface;
uniform sampler2D keptNormal;
#endif
layout(location = 9) in vec2 st;
layout(location = 10) in vec3 ray;
layout(location = 0) out vec4 outColour;
void main() {
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    vec3 gain = vec3(1.0), added = vec3(0.0), paint = vec3(1.0);
#ifdef MOVING_SHADOW
    gain = gainUnder(texelFetch(keptShade, pixel, 0), textureLod(movingCover, st, 0.0).r);
#endif
    float depth = texelFetch(keptDepth, pixel, 0).r;
#ifdef PAINT
    paint = texelFetch(keptPaint, pixel, 0).rgb;
    paint *= paint;
#endif
#ifdef LAMPS
    vec3 body = texelFetch(keptSurface, pixel, 0).rgb;
    vec3 n = texelFetch(keptNormal, pixel, 0).xyz * 2.0 - 1.0;
    added = body * body * lampLight(kEye.xyz + ray * axisDistance(depth), n) * paint;
#endif
    vec4 lit = texelFetch(keptLit, pixel, 0);
    outColour = vec4(lit.rgb * paint * gain + added, lit.a);
    gl_FragDepth = depth;
}
)glsl";

// What the same does to the developed picture, at half resolution: how much of it is hidden (alpha) and what
// is added then, which is exact for the mean of four pixels and keeps the grain between them.
const std::string_view changeFragment = R"glsl(
uniform sampler2D source;  // the developed picture
uniform sampler2D keptDepth;
#ifdef MOVING_SHADOW
uniform sampler2D keptShade;
uniform sampler2DShadow movingShadow;
layout(location = 11) in vec3 shadowRay;
layout(location = 12) flat in vec3 shadowEye;
layout(location = 13) flat in vec4 kMoving;
#endif
#ifdef LAMPS
uniform sampler2D keptSurface;
uniform sampler2D keptNormal;
#ifdef PAINT
uniform sampler2D keptPaint;
#endif
layout(location = 10) in vec3 ray;
#endif
layout(location = 0) out vec4 outColour;
void main() {
    ivec2 last = textureSize(keptDepth, 0) - 1;
    float along = axisDistance(texelFetch(keptDepth, min(ivec2(gl_FragCoord.xy) * 2 + 1, last), 0).r);
    vec2 at = gl_FragCoord.xy * 2.0 * kPicture.xy;  // where four pixels meet
    vec3 shown = textureLod(source, at, 0.0).rgb;
    vec3 light = exposed(shown), changed = light;
#ifdef MOVING_SHADOW
    vec3 c = shadowEye + shadowRay * along;
    float moving = covered(movingShadow, vec3(c.xy, c.z - kMoving.z), kMoving.x, 0.0, 0.0);
    changed *= gainUnder(textureLod(keptShade, at, 0.0), moving);
#endif
#ifdef LAMPS
    vec3 body = textureLod(keptSurface, at, 0.0).rgb;
    vec3 n = textureLod(keptNormal, at, 0.0).xyz * 2.0 - 1.0;
    vec3 added = body * body * lampLight(kEye.xyz + ray * along, n) * kPicture.z;
#ifdef PAINT
    vec3 paint = textureLod(keptPaint, at, 0.0).rgb;
    added *= paint * paint;
#endif
#ifndef PLAIN_FILM
    added *= vignetteAt(at) * kFilm.rgb;
#endif
    changed += added;
#endif
    vec3 wanted = max(shown + shownAgain(changed) - shownAgain(light), 0.0);
    vec3 gain = wanted / max(shown, vec3(1.0 / 255.0));
    float scale = min(min(gain.r, gain.g), min(gain.b, 1.0));
    outColour = vec4(wanted - shown * scale, 1.0 - scale);
}
)glsl";

// What was made at half resolution, blended over the developed picture at full resolution: a film, drawn on
// its own geometry so that its edges and depth are exact, or a change of light, drawn in rectangles.
const std::string_view filmFragment = R"glsl(
uniform sampler2D source;
layout(location = 0) out vec4 outColour;
void main() { outColour = textureLod(source, gl_FragCoord.xy * kPicture.xy, 0.0); }
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

}  // namespace gull::shaders
