// Blends the water, computed in coarse pixels, over the tone-mapped picture; drawn on its own geometry so that its edges
// and depth are exact. EDGES: water behind what stands before it, over the share of a pixel through which it is seen.
#include "frameValues.glsl"

uniform sampler2D source;
#ifdef EDGES
uniform sampler2D staticLit;
uniform sampler2D staticDepth;
#endif
layout(location = 0) out vec4 outColour;
void main() {
    outColour = textureLod(source, gl_FragCoord.xy * kPicture.xy, 0.0);
#ifdef EDGES
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    float stands = step(texelFetch(staticDepth, pixel, 0).r, gl_FragCoord.z);  // before the water, and still
    outColour *= stands * clamp(texelFetch(staticLit, pixel, 0).a - 1.0, 0.0, 1.0);
#endif
}
