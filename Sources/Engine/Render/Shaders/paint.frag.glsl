#include "colour.glsl"
#include "mapBorder.glsl"
#include "paint.glsl"
#include "sparkle.glsl"

uniform sampler2D multiplyMap;
uniform sampler2D staticSurface;
uniform sampler2D staticNormal;
uniform sampler2D staticDepth;
layout(location = 0) out vec4 outColour;
void main() {
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    if (gl_FragCoord.z > texelFetch(staticDepth, pixel, 0).r + 2e-6) discard;
    vec3 paint = decoded(texture(multiplyMap, at).rgb);
    float share = strength * withinMap(at);
    paint = mix(vec3(1.0), paint, share);
    vec3 left = mix(vec3(1.0), paint, texelFetch(staticSurface, pixel, 0).w);
    float sparkling = 1.0 - texelFetch(staticNormal, pixel, 0).w;
    left -= min(left, vec3(sparkling)) * hidesSparkle(paint);
    outColour = vec4(sqrt(left), 1.0);
}
