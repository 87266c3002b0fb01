// The static layer with moving shadows and lamps on it. A moving shadow adds nothing where a still one
// already lies: the sun's part is scaled by the new cover over the old.
#include "depth.glsl"
#include "lamps.glsl"
#include "movingShadow.glsl"
#include "relight.glsl"

uniform sampler2D staticLit;
uniform sampler2D staticDepth;
#ifdef PAINT
uniform sampler2D paintLayer;
#endif
#ifdef MOVING_SHADOW
uniform sampler2D staticShade;
uniform sampler2D movingCover;
#endif
#ifdef LAMPS
uniform sampler2D staticSurface;
uniform sampler2D staticNormal;
#endif
layout(location = 0) out vec4 outColour;
void main() {
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    vec3 gain = vec3(1.0), added = vec3(0.0), paint = vec3(1.0);
#ifdef MOVING_SHADOW
    gain = gainUnder(texelFetch(staticShade, pixel, 0), textureLod(movingCover, st, 0.0).r);
#endif
    float depth = texelFetch(staticDepth, pixel, 0).r;
#ifdef PAINT
    paint = texelFetch(paintLayer, pixel, 0).rgb;
    paint *= paint;
#endif
#ifdef LAMPS
    vec3 body = texelFetch(staticSurface, pixel, 0).rgb;
    vec3 n = texelFetch(staticNormal, pixel, 0).xyz * 2.0 - 1.0;
    added = body * body * lampLight(kEye.xyz + ray * axisDistance(depth), n) * paint;
#endif
    vec4 lit = texelFetch(staticLit, pixel, 0);
    outColour = vec4(lit.rgb * paint * gain + added, lit.a);
    gl_FragDepth = depth;
}
