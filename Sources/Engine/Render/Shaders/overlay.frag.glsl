// Blends a half-resolution picture over the tone-mapped one at full resolution: water, drawn on its own
// geometry so that its edges and depth are exact, or a change of light, drawn in rectangles.
#include "frameValues.glsl"

uniform sampler2D source;
layout(location = 0) out vec4 outColour;
void main() { outColour = textureLod(source, gl_FragCoord.xy * kPicture.xy, 0.0); }
