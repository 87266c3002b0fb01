// Overlay layers: rectangles of plain colours (PLAIN_COLOUR) or of a bitmap. All four values are passed,
// because llvmpipe otherwise misses its linear path.
#include "bitmap.glsl"

layout(location = 0) in vec2 inPosition;
layout(location = 1) in vec4 inValue;
void main() {
    value = inValue;
    gl_Position = vec4(inPosition, 0.0, 1.0);
}
