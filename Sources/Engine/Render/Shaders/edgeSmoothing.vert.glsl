// A shape in front of what is already drawn, a pixel larger all round.
#include "frame.glsl"
#include "interface.glsl"

layout(location = 0) in vec3 inPosition;
layout(location = 1) in vec3 inNormal;
uniform mat4 model;
uniform mat3 normalMatrix;
void main() {
    gl_Position = frame.viewProjection * (model * vec4(inPosition, 1.0));
    vec4 along = frame.viewProjection * vec4(normalMatrix * inNormal, 0.0);
    // Where the point moves on the screen along its normal, in pixels.
    vec2 outward = (along.xy * gl_Position.w - gl_Position.xy * along.w) * frame.picture.xy;
    gl_Position.xy += outward / max(length(outward), 1e-9) * (2.5 * frame.picture.zw * gl_Position.w);
    gl_Position.z -= 2e-4 * gl_Position.w;
}
