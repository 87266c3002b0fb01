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
    vec3 light = c.rgb * (c.a * (1.0 - fog));
#ifdef OUT_DISPLAY
    light = encoded(light) * 0.3;
#endif
    outColour = vec4(light, 0.0);
#else
    vec3 light = mix(c.rgb, kFog.rgb, fog);
#ifdef OUT_DISPLAY
    light = toneMapped(light, gl_FragCoord.xy);
#endif
    outColour = vec4(light * c.a, c.a);
#endif
}
