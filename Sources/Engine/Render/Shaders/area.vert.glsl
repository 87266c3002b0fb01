#include "interface.glsl"

layout(location = 0) in vec2 pixel;
uniform vec2 shift;   // from the rectangles' pixels to the target's
uniform vec2 texel;   // of the target
uniform float depth;  // -1 near to 1 far
void main() { gl_Position = vec4((pixel + shift) * texel * 2.0 - 1.0, depth, 1.0); }
