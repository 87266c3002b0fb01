#include "colour.glsl"
#include "frameValues.glsl"
#include "screen.glsl"
#include "toneMapping.glsl"

uniform sampler2D diffuseMap;  // equirectangular: u follows the azimuth, the middle is -z; v = 1 is up
layout(location = 0) out vec4 outColour;
#ifdef OUT_STATIC
layout(location = 1) out vec4 outShade;
layout(location = 2) out vec4 outSurface;
layout(location = 3) out vec4 outNormal;
#endif
void main() {
    vec2 ndc = (gl_FragCoord.xy + kTile.xy) * kPicture.xy * 2.0 - 1.0;
    vec4 far = frame.inverseViewProjection * vec4(ndc, 1.0, 1.0);
    vec4 near = frame.inverseViewProjection * vec4(ndc, -1.0, 1.0);
    vec3 d = normalize(far.xyz / far.w - near.xyz / near.w);
    vec2 at = vec2(atan(d.x, -d.z) / 6.28318531 + 0.5, asin(clamp(d.y, -1.0, 1.0)) / 3.14159265 + 0.5);
    vec3 c = decoded(textureLod(diffuseMap, at, 0.0).rgb);
#ifdef OUT_DISPLAY
    c = toneMapped(c, gl_FragCoord.xy);
#endif
    outColour = vec4(c, 1.0);
#ifdef OUT_STATIC
    if (far.y < frame.sunShape.z * far.w) outColour.a = 2.0;  // under water, as surfaces note it
    outShade = vec4(1.0, 1.0, 1.0, 0.0);
    outSurface = vec4(0.0);
    outNormal = vec4(0.5, 1.0, 0.5, 1.0);
#endif
}
