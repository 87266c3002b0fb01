#include "particle.glsl"

layout(location = 0) in vec3 inPosition;
layout(location = 2) in vec2 inUv0;
layout(location = 4) in vec4 inColour;
void main() {
    writeFrameValues();
    gl_Position = frame.viewProjection * vec4(inPosition, 1.0);
    at = inUv0;
    colour = inColour;
    range = distance(frame.eye.xyz, inPosition);
}
