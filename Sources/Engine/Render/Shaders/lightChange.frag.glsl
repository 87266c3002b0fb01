// How moving shadows and lamps change the tone-mapped picture, in coarse pixels: how much of it is hidden
// (alpha), and what is then added. Exact for the mean of four pixels; the grain between them stays.
#include "depth.glsl"
#include "lamps.glsl"
#include "movingShadow.glsl"
#include "relight.glsl"
#include "shadow.glsl"
#include "toneMapping.glsl"

uniform sampler2D source;  // the tone-mapped picture
uniform sampler2D staticDepth;
#ifdef MOVING_SHADOW
uniform sampler2D staticShade;
uniform sampler2DShadow movingShadow;
#endif
#ifdef LAMPS
uniform sampler2D staticSurface;
uniform sampler2D staticNormal;
#ifdef PAINT
uniform sampler2D paintLayer;
#endif
#endif
layout(location = 0) out vec4 outColour;
void main() {
    ivec2 last = textureSize(staticDepth, 0) - 1;
    ivec2 pixel = min(ivec2(st * vec2(last + 1)), last);  // in the middle of the coarse one
    float along = axisDistance(texelFetch(staticDepth, pixel, 0).r);
    vec3 shown = textureLod(source, st, 0.0).rgb;
    vec3 light = inverseToneMapped(shown), changed = light;
#ifdef MOVING_SHADOW
    vec3 c = shadowEye + shadowRay * along;
    float moving = covered(movingShadow, vec3(c.xy, c.z - kMoving.z), kMoving.x, 0.0, 0.0);
    changed *= gainUnder(texelFetch(staticShade, pixel, 0), moving);
#endif
#ifdef LAMPS
    vec3 body = texelFetch(staticSurface, pixel, 0).rgb;
    vec3 n = texelFetch(staticNormal, pixel, 0).xyz * 2.0 - 1.0;
    vec3 added = body * body * lampLight(kEye.xyz + ray * along, n) * kPicture.z;
#ifdef PAINT
    vec3 paint = texelFetch(paintLayer, pixel, 0).rgb;
    added *= paint * paint;
#endif
#ifndef NO_TONE_MAPPING
    added *= vignetteAt(st) * kToneGain.rgb;
#endif
    changed += added;
#endif
    vec3 wanted = max(shown + toneMappedPerChannel(changed) - toneMappedPerChannel(light), 0.0);
    vec3 gain = wanted / max(shown, vec3(1.0 / 255.0));
    float scale = min(min(gain.r, gain.g), min(gain.b, 1.0));
    outColour = vec4(wanted - shown * scale, 1.0 - scale);
}
