#include "bitmap.glsl"

uniform sampler2D source;
uniform float opacity;
out vec4 outColour;
void main() {
#ifdef PLAIN_COLOUR
    outColour = value;
#elif defined(FADED)
    outColour = texture(source, value.xy) * opacity;
#else
    outColour = texture(source, value.xy);
#endif
}
