#include "colour.glsl"
#include "paint.glsl"

uniform sampler2D multiplyMap;
uniform sampler2D staticSurface;
uniform sampler2D staticDepth;
layout(location = 0) out vec4 outColour;
void main() {
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    if (gl_FragCoord.z > texelFetch(staticDepth, pixel, 0).r + 2e-6) discard;
    vec3 paint = decoded(texture(multiplyMap, at).rgb);
    outColour = vec4(sqrt(mix(vec3(1.0), paint, strength * texelFetch(staticSurface, pixel, 0).w)), 1.0);
}
