#include "frameValues.glsl"
#include "screen.glsl"

uniform float depth;
void main() {
    writeFrameValues();
    st = vec2(gl_VertexID == 1 ? 2.0 : 0.0, gl_VertexID == 2 ? 2.0 : 0.0);
    gl_Position = vec4(st * 2.0 - 1.0, depth, 1.0);
}
