// Particles are unlit: they are drawn over the finished picture.
#include "colour.glsl"
#include "fog.glsl"
#include "particle.glsl"
#include "toneMapping.glsl"

uniform sampler2D diffuseMap;
out vec4 outColour;
void main() {
    vec4 c = texture(diffuseMap, at);
    c = vec4(decoded(c.rgb), c.a) * colour;
    float fog = fogAt(range);
#ifdef ADDITIVE
    outColour = unlitGlow(c.rgb, c.a * (1.0 - fog));
#else
    outColour = vec4(unlitShown(c.rgb, fog, gl_FragCoord.xy) * c.a, c.a);
#endif
}
