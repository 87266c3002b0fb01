#include "compiledOnce.glsl"
#include "screen.glsl"
#include "toneMapping.glsl"

uniform sampler2D source;
uniform sampler2D bloom;
uniform sampler2D paintLayer;
uniform float encodeOnly;  // 1: for a camera without tone mapping
out vec4 outColour;
void main() {
    COMPILED_ONCE;
    vec4 c = textureLod(source, st, 0.0);
    c.a = min(c.a, 1.0);  // more where the ground is under water
    vec3 light = c.a > 0.0 ? c.rgb / c.a : c.rgb;
    vec3 paint = textureLod(paintLayer, st, 0.0).rgb;
    light = light * paint * paint + textureLod(bloom, st, 0.0).rgb * kGrade.y;
    vec2 pixel = gl_FragCoord.xy + kTile.xy;
    outColour = vec4(mix(toneMapped(light, pixel), encodedOnly(light, pixel), encodeOnly) * c.a, c.a);
}
