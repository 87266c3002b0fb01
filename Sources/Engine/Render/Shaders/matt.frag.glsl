// A matt surface, lit and tone mapped at its vertices.
#include "shadow.glsl"
#include "surface.glsl"

uniform sampler2D diffuseMap;
uniform vec4 diffuseGain;  // 1 / diffuseMean
uniform sampler2DShadow sunShadow;
out vec4 outColour;
void main() {
#ifdef SUN_SHADOW
    vec3 colour = shaded + sunny * (1.0 - coveredOnce(sunShadow, shadowAt));
#else
    vec3 colour = shaded + sunny;
#endif
#ifdef DIFFUSE_MAP
    colour *= texture(diffuseMap, mapsAt.xy).rgb * diffuseGain.rgb;
#endif
    outColour = vec4(colour, 1.0);
}
